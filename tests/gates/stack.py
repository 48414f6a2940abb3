#!/usr/bin/env python3
"""Finds the deepest own stack of the library from the compiler's call graph (-fcallgraph-info=su,da).

    stack.py READELF OBJECT_DIR RULES_FILE LIMIT

"Own" is what the library's functions put on the stack; what the C and XML libraries need below them is
theirs. Two kinds of calls are not in the compiler's graph: calls through pointers, and which message table
the engine is walking. Both are taken from the objects' relocations, which say what every function and
every constant table refers to. RULES_FILE holds lines with patterns for whole demangled names:

    engine FUNCTION           is handed a table: what it calls through pointers is what that table, or the
                              function itself, refers to; other functions hand it a table they refer to
    nested FUNCTION           an engine function that others call again with a table nested in theirs
    call CALLER -> CALLEE     calls through pointers in CALLER reach functions like CALLEE only
    kinds FUNCTION -> N ...   FUNCTION is entered only for tables with rows of these kinds, numbered as in table.h
    recursion FUNCTION N      FUNCTION is entered at most N times on one path

A caller through pointers without a rule may reach every function whose address is taken. Recursion that is
not listed is a fault, tables that contain themselves included, and so is stack of a size that only shows
at run time.
"""
import pathlib
import re
import struct
import subprocess
import sys

CALL_RELOCATIONS = {"R_ARM_CALL", "R_ARM_THM_CALL", "R_ARM_JUMP24", "R_ARM_THM_JUMP24", "R_ARM_THM_JUMP19"}
INDIRECT = "__indirect_call"
NO_TABLE = ""  # one that refers to nothing


class Function:
    def __init__(self, name):
        self.name = name  # demangled
        self.own = 0      # bytes
        self.defined = False
        self.fault = None
        self.calls = set()  # keys
        self.indirect = False
        self.refers = set()  # keys of functions and data


def plain(title, label):
    """The demangled name of a node."""
    name = label.split("\\n")[0]
    if name == ")":  # what gcc 12 makes of a name with an ellipsis
        name = subprocess.run(["c++filt", title], check=True, capture_output=True, text=True).stdout.strip()
    return name


def read_graph(objects):
    """Functions by key, and per unit the keys by assembler name. Keys keep local names of units apart."""
    functions, units = {}, {}
    for path in sorted(pathlib.Path(objects).rglob("*.ci")):
        unit = path.name[:-3]
        names = units.setdefault(unit, {})

        def key_of(title, unit=unit):
            return f"{unit}:{title.rsplit(':', 1)[1]}" if ":" in title else title

        for line in path.read_text().splitlines():
            node = re.match(r'node: \{ title: "([^"]*)" label: "([^"]*)"', line)
            edge = re.match(r'edge: \{ sourcename: "([^"]*)" targetname: "([^"]*)"', line)
            if node and node[1] != INDIRECT:
                function = functions.setdefault(key_of(node[1]), Function(plain(node[1], node[2])))
                size = re.search(r"\\n(\d+) bytes \(([^)]*)\)", node[2])
                if size:
                    function.defined = True
                    function.name = plain(node[1], node[2])
                    function.own = max(function.own, int(size[1]))
                    if "dynamic" in size[2] and "bounded" not in size[2]:
                        function.fault = f"stack of a size known at run time only: {function.name}"
                    names[node[1].rsplit(":", 1)[-1]] = key_of(node[1])
            elif edge:
                source = functions.setdefault(key_of(edge[1]), Function(edge[1]))
                if edge[2] == INDIRECT:
                    source.indirect = True
                else:
                    source.calls.add(key_of(edge[2]))
                    functions.setdefault(key_of(edge[2]), Function(edge[2]))
    return functions, units


def read_references(readelf, objects, functions, units):
    """What functions and data refer to other than by calling. Returns the data's references."""
    data = {}
    everywhere = {name: key for names in units.values() for name, key in names.items()}
    for path in sorted(pathlib.Path(objects).rglob("*.o")):
        unit = path.name[:-2]
        names = units.get(unit, {})

        def key_of(symbol, unit=unit, names=names):
            name = re.sub(r"^\.(text(\.unlikely|\.startup)?|data\.rel\.ro(\.local)?|data|rodata)\.", "", symbol)
            local = "_GLOBAL__N_" in name or name.startswith("_ZNL") or name.startswith("_ZL")
            return names.get(name) or everywhere.get(name) or (f"{unit}:{name}" if local else name)

        owner = None
        text = subprocess.run([readelf, "-rW", str(path)], check=True, capture_output=True, text=True).stdout
        for line in text.splitlines():
            header = re.match(r"Relocation section '\.rela?(\.[^']*)'", line)
            if header:
                ours = re.match(r"\.(text|data|rodata)", header[1])
                owner = key_of(header[1]) if ours else None
                continue
            fields = line.split()
            if owner is None or len(fields) < 5 or not fields[2].startswith("R_") or fields[2] in CALL_RELOCATIONS:
                continue
            target = key_of(fields[4])
            if owner in functions:
                functions[owner].refers.add(target)
            else:
                data.setdefault(owner, set()).add(target)
    return data


def sections(path):
    """Name and contents of the sections of a 32-bit little-endian object."""
    image = path.read_bytes()
    start, = struct.unpack_from("<I", image, 32)
    size, count, names = struct.unpack_from("<HHH", image, 46)
    headers = [struct.unpack_from("<6I", image, start + i * size) for i in range(count)]
    for name, _, _, _, offset, length in headers:
        at = headers[names][4] + name
        yield image[at:image.index(b"\0", at)].decode(), image[offset:offset + length]


def table_start(contents):
    """Where the head of a message table begins: in front of it there may be a Source. None: this is no table."""
    for start in 0, 12:
        if len(contents) >= start + 12:
            _, flags, rows, _, refs, texts = struct.unpack_from("<IHBBHH", contents, start)
            sourced = flags & 0x2000 != 0
            if rows and 12 + 8 * rows <= refs <= texts <= len(contents) - start and sourced == (start == 12):
                return start
    return None


def is_message_table(contents):
    return table_start(contents) is not None


def row_kinds(contents):
    start = table_start(contents)
    rows = contents[start + 6]
    return {contents[start + 12 + 8 * row + 4] & 0x1F for row in range(rows)}


def tables_in(objects):
    """The kinds of the rows of all message tables; and the keys of the tables that refer to nothing."""
    kinds, leaves = {}, set()
    for path in sorted(pathlib.Path(objects).rglob("*.o")):
        for name, contents in sections(path):
            symbol = re.match(r"\.(rodata|data\.rel\.ro(?:\.local)?)\.(_ZN.*)", name)
            if symbol and is_message_table(contents):
                for key in symbol[2], f"{path.name[:-2]}:{symbol[2]}":
                    kinds[key] = row_kinds(contents)
                    if symbol[1] == "rodata":
                        leaves.add(key)
    return kinds, leaves


class Rules:
    def __init__(self, path):
        self.lines = []  # (kind, pattern, argument, line)
        self.used = set()
        for line in pathlib.Path(path).read_text().splitlines():
            line = line.strip()
            if not line or line.startswith("#"):
                continue
            kind, _, rest = line.partition(" ")
            pattern, argument = rest, None
            if kind == "call":
                pattern, _, argument = rest.partition(" -> ")
                argument = re.compile(argument.strip())
            elif kind == "kinds":
                pattern, _, argument = rest.partition(" -> ")
                argument = {int(number) for number in argument.split()}
            elif kind == "recursion":
                pattern, _, argument = rest.rpartition(" ")
                argument = int(argument)
            elif kind not in ("engine", "nested"):
                sys.exit(f"{path}: cannot read: {line}")
            self.lines.append((kind, re.compile(pattern.strip()), argument, line))

    def of(self, kind, name):
        """The arguments of the rules of a kind that a name matches."""
        found = [(argument, line) for k, pattern, argument, line in self.lines if k == kind and pattern.fullmatch(name)]
        self.used |= {line for _, line in found}
        return [argument for argument, _ in found]

    def unused(self):
        return [line for _, _, _, line in self.lines if line not in self.used]


class Graph:
    def __init__(self, functions, data, tables, rules):
        self.functions, self.data, self.rules = functions, data, rules
        self.kinds, self.leaves = tables
        referred = set().union(*data.values(), *(function.refers for function in functions.values()))
        self.taken = {key for key in referred if key in functions and functions[key].defined}
        self.engine = {key for key, function in functions.items() if function.defined and rules.of("engine", function.name)}
        self.nested = {key for key in self.engine if rules.of("nested", functions[key].name)}
        self.inside = {key for key in self.engine for entry in self.nested if self.reaches(entry, key)}

    def reaches(self, source, target):
        """Is there a path of engine functions?"""
        seen, waiting = set(), [source]
        while waiting:
            key = waiting.pop()
            if key == target:
                return True
            if key not in seen:
                seen.add(key)
                waiting += [callee for callee in self.functions[key].calls if callee in self.engine]
        return False

    def functions_of(self, data_keys):
        return {key for name in data_keys for key in self.data.get(name, ()) if key in self.functions}

    def tables_of(self, keys):
        return {key for key in keys if key in self.data or key in self.leaves}

    def handed_on(self, function):
        """The tables that a function outside the engine may hand to it: any, unless it names some."""
        named = [key for key in function.refers if key not in self.functions and re.search(r"(^|:)_Z", key)]
        return self.tables_of(named if named else self.data) or {NO_TABLE}

    def may_handle(self, callee, table):
        """Some functions are entered for rows of certain kinds only."""
        wanted = self.rules.of("kinds", self.functions[callee].name)
        return not wanted or table not in self.kinds or bool(wanted[0] & self.kinds[table])

    def calls(self, key, table):
        """The (function, table) pairs that a function may enter while it works on a table."""
        function = self.functions[key]
        targets = set(function.calls)
        if function.indirect:
            if key in self.engine and table is not None:
                reachable = self.functions_of({table} | function.refers) | (function.refers & self.taken)
            else:
                reachable = self.taken
            patterns = self.rules.of("call", function.name)
            targets |= {callee for callee in reachable
                        if not patterns or any(p.fullmatch(self.functions[callee].name) for p in patterns)}
        for callee in sorted(targets):
            if not self.functions[callee].defined or not self.may_handle(callee, table):
                continue
            if callee not in self.engine:
                yield callee, None
            elif key not in self.engine or table is None:
                for choice in sorted(self.handed_on(function)):
                    yield callee, choice
            elif callee in self.nested and key in self.inside:
                for choice in sorted(self.tables_of(self.data.get(table, ()))):
                    yield callee, choice
            else:
                yield callee, table


class Deepest:
    """The longest path from a function on, by function, table, and how often each listed recursion was entered."""

    def __init__(self, graph):
        self.graph, self.functions = graph, graph.functions
        self.recursion = [(pattern, most, line) for kind, pattern, most, line in graph.rules.lines if kind == "recursion"]
        self.known, self.path, self.faults = {}, [], {}

    def entered(self, name, counts):
        """The counts after entering a function; None when its recursion is used up."""
        for i, (pattern, most, line) in enumerate(self.recursion):
            if pattern.fullmatch(name):
                self.graph.rules.used.add(line)
                if counts[i] == most:
                    return None
                counts = counts[:i] + (counts[i] + 1,) + counts[i + 1:]
        return counts

    def of(self, key, table=None, counts=None):
        function = self.functions[key]
        counts = self.entered(function.name, counts or (0,) * len(self.recursion))
        if counts is None:
            return 0, ()
        state = key, table, counts
        if state in self.known:
            return self.known[state]
        if state in self.path:
            cycle = [self.functions[s[0]].name for s in self.path[self.path.index(state):]]
            self.faults["recursion: " + "\n    -> ".join(cycle)] = True
            return 0, ()
        self.path.append(state)
        if function.fault:
            self.faults[function.fault] = True
        best = max((self.of(callee, choice, counts) for callee, choice in self.graph.calls(key, table)),
                   default=(0, ()), key=lambda found: found[0])
        self.path.pop()
        self.known[state] = best[0] + function.own, ((key, table),) + best[1]
        return self.known[state]


def main():
    readelf, objects, rules_file, limit = sys.argv[1:]
    sys.setrecursionlimit(10000)
    functions, units = read_graph(objects)
    if not any(function.defined for function in functions.values()):
        sys.exit(f"no call graph in {objects}: build with NETPUBLIC_STACK_USAGE")
    bare = [path.name for path in pathlib.Path(objects).rglob("*.o") if not path.with_suffix(".ci").exists()]
    if bare:
        sys.exit("no call graph of " + ", ".join(sorted(bare)))
    rules = Rules(rules_file)
    graph = Graph(functions, read_references(readelf, objects, functions, units), tables_in(objects), rules)
    deepest = Deepest(graph)
    starts = [key for key, function in functions.items() if function.defined and key not in graph.engine]
    bytes_, path = max((deepest.of(key) for key in sorted(starts)), key=lambda found: found[0])
    for key, table in path:
        if functions[key].own:
            print(f"{functions[key].own:6} {functions[key].name}" + (f" [{table.rsplit(':', 1)[-1]}]" if table else ""))
    print(f"{bytes_:6} bytes on the deepest path, {limit} allowed")
    faults = list(deepest.faults) + [f"rule without use: {line}" for line in rules.unused()]
    for fault in faults:
        print(fault)
    return 1 if faults or bytes_ > int(limit) else 0


if __name__ == "__main__":
    sys.exit(main())
