#!/usr/bin/env python3
"""Finds the deepest own stack of the library from the compiler's call graph (-fcallgraph-info=su,da).

    stack.py READELF OBJECT_DIR RULES_FILE LIMIT

"Own" is what the library's functions put on the stack; what the C and XML libraries need below them is
theirs. Two kinds of calls are not in the compiler's graph: calls through pointers, and which message table
the engine is walking. Both are taken from the objects' relocations, which say what every function and
every constant table refers to. RULES_FILE holds lines with patterns for whole demangled names:

    engine FUNCTION              is handed a table: what it calls through pointers is what that table, or the
                                 function itself, refers to; other functions hand it a table they refer to
    nested CALLER => CALLEE -> ROLE ...
                                 the engine function CALLER hands CALLEE not its own table, but those that its
                                 table refers to in these roles
    roles FUNCTION -> ROLE ...   the engine function enters what its table refers to in these roles only
    call CALLER -> CALLEE        calls through pointers in CALLER reach functions like CALLEE only
    key CALLER -> CALLEE         calls through pointers in CALLER reach every function like CALLEE: the host passes them
    kinds FUNCTION -> KIND ...   FUNCTION is entered only for tables with rows of these kinds, by their names in table.h

The roles are those of Table.roles(). A function that ends by jumping to another one has freed its own frame by then;
relocations tell jumps from calls.

A caller through pointers without a rule may reach every function whose address is taken. Recursion is a fault,
tables that contain themselves included, but for the engine's descent from a table to those nested in it; and so is
stack of a size that only shows at run time.
"""
import pathlib
import re
import struct
import subprocess
import sys

CALLS = {"R_ARM_CALL", "R_ARM_THM_CALL"}
JUMPS = {"R_ARM_JUMP24", "R_ARM_THM_JUMP24", "R_ARM_THM_JUMP19"}
INDIRECT = "__indirect_call"


class Function:
    def __init__(self, name):
        self.name = name  # demangled
        self.own = 0      # bytes
        self.defined = False
        self.fault = None
        self.calls = set()  # keys
        self.returns_from, self.jumps_to = set(), set()  # keys: those called, and those that take its frame's place
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


def data_key(unit, name):
    local = "_GLOBAL__N_" in name or name.startswith(("_ZNL", "_ZL"))
    return f"{unit}:{name}" if local else name


def read_references(readelf, objects, functions, units):
    """What functions and data refer to other than by calling. Returns the data's references by their places."""
    data = {}
    everywhere = {name: key for names in units.values() for name, key in names.items()}
    for path in sorted(pathlib.Path(objects).rglob("*.o")):
        unit = path.name[:-2]
        names = units.get(unit, {})

        def key_of(symbol, unit=unit, names=names):
            name = re.sub(r"^\.(text(\.unlikely|\.startup)?|data\.rel\.ro(\.local)?|data|rodata)\.", "", symbol)
            return names.get(name) or everywhere.get(name) or data_key(unit, name)

        owner = None
        text = subprocess.run([readelf, "-rW", str(path)], check=True, capture_output=True, text=True).stdout
        for line in text.splitlines():
            header = re.match(r"Relocation section '\.rela?(\.[^']*)'", line)
            if header:
                ours = re.match(r"\.(text|data|rodata)", header[1])
                owner = key_of(header[1]) if ours else None
                continue
            fields = line.split()
            if owner is None or len(fields) < 5 or not fields[2].startswith("R_"):
                continue
            target = key_of(fields[4])
            if fields[2] in CALLS | JUMPS:
                if owner in functions:
                    (functions[owner].returns_from if fields[2] in CALLS else functions[owner].jumps_to).add(target)
            elif owner in functions:
                functions[owner].refers.add(target)
            else:
                data.setdefault(owner, {})[int(fields[0], 16)] = target
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


def kind_names():
    """The names of table.h's kinds of rows, in the order of their numbers."""
    header = pathlib.Path(__file__).parents[2] / "netpublic/src/engine/table.h"
    body = re.search(r"enum class Kind[^{]*\{(.*?)\};", header.read_text(), re.S)[1]
    return re.findall(r"^\s*(\w+)", re.sub(r"//[^\n]*", "", body), re.M)


KINDS = kind_names()
# The packed form: see table.h.
SOURCE = TABLE_HEAD = 12  # bytes
HAS_BEFORE, HAS_AFTER, IS_ORDERED, HAS_SOURCE, IS_WALKED = 0x400, 0x800, 0x1000, 0x2000, 0x10
COMPLAINS, ATTACHED = 0x8, 0x80  # a row's flags
NO_COLUMN = 0x7F  # a row's column that says nothing
BY_FUNCTION = 3  # a condition's When
BEHIND_KEYS = KINDS.index("preset")
HOOKS = "ahead", "then", "absent"  # by Moment


class Row:
    def __init__(self, index, first, second):
        self.index = index
        self.offset, self.flags = first & 0x3FFFF, first >> 18
        self.kind, self.key = KINDS[second & 0x1F], second >> 19
        self.ref, self.limits = second >> 5 & 0x7F, second >> 12 & 0x7F


class Table:
    """A packed message table; `references` are what its words refer to, by their place in the section."""

    def __init__(self, contents, references):
        word, self.flags, count, self.written, self.refs, self.texts = struct.unpack_from("<IHBBHH", contents)
        self.keys = word >> 18 & 0x7F
        self.rows = [Row(i, *struct.unpack_from("<II", contents, TABLE_HEAD + 8 * i)) for i in range(count)]
        order = self.texts - self.written
        self.order = contents[order:self.texts] if self.flags & IS_ORDERED else range(self.written)
        self.source = self.refs - SOURCE if self.flags & HAS_SOURCE else None
        self.references = {(place - self.refs) // 4: target for place, target in references.items()}

    def reads(self, row):
        return row.index < self.keys

    def writes(self, row):
        return row.index in self.order

    def roles(self):
        """What the engine may enter from here: (role, function, table that it is handed).

        The roles are the names of the members of Ref; rows of other tables have none: (kind of row, None, table).
        """
        to, hooks = self.references.__getitem__, 0
        for flag, role in (HAS_BEFORE, "before"), (HAS_AFTER, "after"), (IS_WALKED, "parse"):
            if self.flags & flag:
                yield role, to(hooks), None
                hooks += 1
        for row in self.rows:
            if row.kind in ("wire", "wires", "converted"):
                what, inner = ("text", None) if row.kind == "converted" else ("wire", to(row.ref))
                at = row.ref + (0 if inner is None else 1)
                if self.reads(row):
                    yield f"read_{what}", to(at), inner
                    at += 1
                if self.writes(row):
                    yield f"write_{what}", to(at), inner
            elif row.kind in ("group", "list"):
                attached = "_attached" if row.kind == "group" and row.flags & ATTACHED else ""
                if self.reads(row):
                    yield f"read{attached}_{row.kind}", None, to(row.ref)
                if self.writes(row):
                    yield f"write_{row.kind}", None, to(row.ref)
            elif row.kind == "again":
                yield "read_attached_group", None, to(row.offset)
            elif row.kind == "hook":
                yield HOOKS[row.limits], to(row.offset), None
            elif row.kind == "condition" and row.limits & 3 == BY_FUNCTION:
                yield "test", to(row.offset), None

    def kinds(self):
        return {row.kind for row in self.rows}


def is_message_table(contents):
    """Could this be a packed message table?"""
    if len(contents) < TABLE_HEAD:
        return False
    word, flags, count, written, refs, texts = struct.unpack_from("<IHBBHH", contents)
    keys, rows_end = word >> 18 & 0x7F, TABLE_HEAD + 8 * count
    if not (keys <= count and written <= count > 0 and refs <= texts <= len(contents)):
        return False
    rows_end += SOURCE if flags & HAS_SOURCE else 0
    order = written if flags & IS_ORDERED else 0
    if refs < rows_end or (refs - rows_end) % 8 != 0 or (texts - refs - order) % 4 != 0:
        return False
    kinds = [contents[TABLE_HEAD + 8 * row + 4] & 0x1F for row in range(count)]
    return max(kinds) < len(KINDS) and all(kind < BEHIND_KEYS for kind in kinds[:keys])


def tables_in(objects, data):
    """The message tables by key."""
    tables = {}
    for path in sorted(pathlib.Path(objects).rglob("*.o")):
        for name, contents in sections(path):
            symbol = re.match(r"\.(rodata|data\.rel\.ro(?:\.local)?)\.(_Z.*)", name)
            if symbol and is_message_table(contents):
                key = data_key(path.name[:-2], symbol[2])
                tables[key] = Table(contents, data.get(key, {}))
    return tables


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
            if kind in ("call", "key"):
                pattern, _, argument = rest.partition(" -> ")
                argument = re.compile(argument.strip())
            elif kind in ("kinds", "roles"):
                pattern, _, argument = rest.partition(" -> ")
                argument = set(argument.split())
                if kind == "kinds" and argument - set(KINDS):
                    sys.exit(f"{path}: no such kind: {line}")
            elif kind == "nested":
                pattern, _, argument = rest.rpartition(" -> ")
                argument = set(argument.split())
            elif kind != "engine":
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
        self.functions, self.data, self.tables, self.rules = functions, data, tables, rules
        referred = set().union(*(references.values() for references in data.values()),
                               *(function.refers for function in functions.values()))
        self.taken = {key for key in referred if key in functions and functions[key].defined}
        self.engine = {key for key, function in functions.items() if function.defined and rules.of("engine", function.name)}
        self.roles = {}
        for name, table in tables.items():
            try:
                self.roles[name] = list(table.roles())
            except (KeyError, IndexError):
                sys.exit(f"{name} is packed in another way than stack.py takes for granted")
            for role, function, inner in self.roles[name]:
                if (function is not None and function not in self.taken) or (inner is not None and inner not in tables):
                    sys.exit(f"{name} is packed in another way than stack.py takes for granted: {role} {function} {inner}")

    def tables_of(self, keys, seen=()):
        """The tables among some data, and those that the other data refers to."""
        found = {key for key in keys if key in self.tables}
        for key in keys:
            if key in self.data and key not in found and key not in seen:
                found |= self.tables_of(self.data[key].values(), (*seen, key))
        return found

    def handed_on(self, function):
        """The tables that a function hands to the engine by itself."""
        return self.tables_of(function.refers)

    def may_handle(self, callee, table):
        """Some functions are entered for rows of certain kinds only."""
        wanted = self.rules.of("kinds", self.functions[callee].name)
        return not wanted or table not in self.tables or any(kinds & self.tables[table].kinds() for kinds in wanted)

    def through_pointers(self, key, table):
        """The (function, table) pairs that a function may enter through pointers."""
        function = self.functions[key]
        passed = self.rules.of("key", function.name)
        if passed:
            return {(callee, None) for callee, other in self.functions.items()
                    if other.defined and any(pattern.fullmatch(other.name) for pattern in passed)}
        patterns = self.rules.of("call", function.name)
        roles = set().union(*self.rules.of("roles", function.name))
        if key not in self.engine or table not in self.tables:
            reached = {(callee, None) for callee in self.taken}
        else:
            reached = {(callee, inner) for role, callee, inner in self.roles[table]
                       if callee is not None and (not roles or role in roles)}
            reached |= {(callee, None) for callee in function.refers & self.taken}
        return {(callee, inner) for callee, inner in reached
                if not patterns or any(p.fullmatch(self.functions[callee].name) for p in patterns)}

    def inner_tables(self, key, callee, table):
        """The tables inside a table that an engine function hands to another one, which may be itself; None when
        it hands on its own."""
        wanted = [roles for roles in self.rules.of("nested", f"{self.functions[key].name} => {self.functions[callee].name}")]
        if not wanted:
            return None
        return {inner for role, function, inner in self.roles.get(table, ())
                if function is None and role in set().union(*wanted)}

    def calls(self, key, table):
        """The (function, table) pairs that a function may enter while it works on a table."""
        function = self.functions[key]
        targets = [(callee, None) for callee in function.calls]
        if function.indirect:
            targets += self.through_pointers(key, table)
        for callee, inner in sorted(targets, key=str):
            if not self.functions[callee].defined or not self.may_handle(callee, table):
                continue
            if callee not in self.engine:
                yield callee, None
                continue
            choices = {inner} if inner is not None else set()
            if not choices:
                choices = self.handed_on(function)
                if key in self.engine and table is not None:
                    nested = self.inner_tables(key, callee, table)
                    choices |= {table} if nested is None else nested
                elif not choices:
                    choices = set(self.tables)
            for choice in sorted(choices):
                yield callee, choice


class Deepest:
    """The longest path from a function on, by function and table."""

    def __init__(self, graph):
        self.graph, self.functions = graph, graph.functions
        self.known, self.path, self.faults = {}, [], {}

    def of(self, key, table=None):
        function = self.functions[key]
        state = key, table
        if state in self.known:
            return self.known[state]
        if state in self.path:
            cycle = [self.functions[s[0]].name for s in self.path[self.path.index(state):]]
            self.faults["recursion: " + "\n    -> ".join(cycle)] = True
            return 0, ()
        self.path.append(state)
        if function.fault:
            self.faults[function.fault] = True
        here = (key, table),
        best = function.own, here
        for callee, choice in self.graph.calls(key, table):
            depth, path = self.of(callee, choice)
            if callee not in function.jumps_to - function.returns_from:
                depth, path = depth + function.own, here + path
            best = max(best, (depth, path), key=lambda found: found[0])
        self.path.pop()
        self.known[state] = best
        return best


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
    data = read_references(readelf, objects, functions, units)
    graph = Graph(functions, data, tables_in(objects, data), rules)
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
