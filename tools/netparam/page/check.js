// Reads a text by a message's table, as the library does: which key each child answers to, and whether the key
// takes it. Code of a message's own is not known here.

const fold = text => text.replace(/[A-Z]/g, c => c.toLowerCase());
const bytesIn = text => new TextEncoder().encode(text).length;

// How a name and a key are compared, by the table's rule; names "in_order" and "looked_up" are seen to elsewhere.
const answers = {
    beginnings: (name, key) => fold(key).startsWith(fold(name)),
    whole: (name, key) => fold(name).slice(0, 31) === fold(key).slice(0, 31),
    longer: (name, key) => fold(name).startsWith(fold(key)),
    any: () => true,
    in_order: (name, key) => fold(key).startsWith(fold(name)),
    looked_up: (name, key) => name === key,
};

// The rows that a child of this name is read by; most children have one, strangers none.
function readersOf(table, name, rows) {
    const readers = [];
    let tried = true; // behind a key that takes the child, until a test of its own begins, no other is
    for (const row of rows) {
        tried ||= row.own_test;
        if (tried && answers[table.names](name, row.key)) {
            readers.push(row);
            tried = false;
        }
    }
    return readers;
}

// The nodes that a reader looks at.
function childrenFor(table, rows, element) {
    const nodes = nodesOf(element);
    if (table.names === "looked_up") return rows.flatMap(row => nodes.find(node => nameOf(node) === row.key) ?? []);
    return table.first_only ? nodes.slice(0, 1) : nodes;
}

function readersAt(table, rows, node, place) {
    if (table.names === "in_order") return readersOf(table, nameOf(node), rows.slice(place, place + 1));
    return table.names === "any" && node.nodeType !== Node.ELEMENT_NODE ? [] : readersOf(table, nameOf(node), rows);
}

function distance(a, b) {
    let line = [...Array(b.length + 1).keys()];
    for (let i = 1; i <= a.length; ++i) {
        const next = [i];
        for (let j = 1; j <= b.length; ++j)
            next[j] = Math.min(line[j] + 1, next[j - 1] + 1, line[j - 1] + (a[i - 1] === b[j - 1] ? 0 : 1));
        line = next;
    }
    return line[b.length];
}

// The one that may have been meant; empty without one.
function nearest(typed, names) {
    const far = name => distance(fold(typed), fold(name));
    const best = names.reduce((a, b) => (a !== undefined && far(a) <= far(b) ? a : b), undefined);
    return best !== undefined && far(best) <= Math.max(1, typed.length / 3) ? `; did you mean “${best}”?` : "";
}

// Why a number is refused; nothing when it is taken.
function numberFault(row, text) {
    if (text === null) return row.tolerant ? "" : "there is no text";
    if (!/^(-?\d+|-)$/.test(text)) return row.tolerant ? "" : "this is no whole number";
    if (text.length > row.longest) return `the number has more than ${row.longest} characters`;
    const [low, high] = row.range ?? (row.kind === "flag" ? [0, 1] : [-Infinity, Infinity]);
    return Number(text) < low || Number(text) > high ? "the number is out of range" : "";
}

const lengthFault = ({ longest }, text) =>
    longest && bytesIn(text) > longest ? `the text has ${bytesIn(text)} bytes, more than ${longest}` : "";

const readable = words => words.filter(entry => entry.use !== "write").map(entry => entry.word);

// What a row takes, in words.
const acceptedBy = ({ accepts, words }) => (words ? `${accepts}: ${readable(words).join(", ")}` : accepts);

function wordFault(row, text) {
    const same = row.case ? (a, b) => a === b : (a, b) => fold(a) === fold(b);
    const fits = entry =>
        row.prefix && entry.use !== "whole" ? fold(entry.word).startsWith(fold(text)) : same(entry.word, text);
    if (row.unknown || row.words.some(entry => entry.use !== "write" && fits(entry))) return "";
    return `there is no word “${text}”${nearest(text, readable(row.words))}`;
}

// The words of a set are looked for anywhere in the text; what is none of them has no effect.
function strangeWords(row, text) {
    const known = readable(row.words).map(fold);
    return text
        .split(/[,;|\s]+/)
        .filter(part => part !== "" && fold(part) !== "none" && !known.some(word => fold(part).includes(word)));
}

const alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
const most_columns = 155;
const most_rows = 100;

// A grid's cells: base64 of bits, the first cell in the top bit. Null when it is none.
function cellsFrom(text) {
    if (text.length % 4 !== 0 || !/^[A-Za-z0-9+/]*={0,2}$/.test(text)) return null;
    const digits = [...text].map(c => (c === "=" ? 0 : alphabet.indexOf(c)));
    const cells = digits.flatMap(digit => [5, 4, 3, 2, 1, 0].map(bit => (digit >> bit) & 1));
    const padding = text.length - text.replace(/=/g, "").length;
    return cells.slice(0, cells.length - 8 * padding); // a "=" stands for a byte that is not there
}

function textFrom(cells) {
    const bytes = new Uint8Array(Math.ceil(cells.length / 8));
    cells.forEach((cell, i) => {
        bytes[i >> 3] |= cell << (7 - (i & 7));
    });
    return btoa(String.fromCharCode(...bytes));
}

function gridFault(columns, rows, text) {
    if (!(columns >= 1 && columns <= most_columns && rows >= 1 && rows <= most_rows))
        return `there is no grid of ${columns || 0} × ${rows || 0} cells`;
    const cells = cellsFrom(text);
    if (cells === null) return "this is no base64";
    const wanted = Math.min(Math.ceil((columns * rows) / 8) * 8, most_columns * most_rows);
    return Math.min(cells.length, most_columns * most_rows) === wanted
        ? ""
        : `these are ${cells.length} cells, but a grid of ${columns} × ${rows} has ${wanted}, filled up to whole bytes`;
}

const isNumber = row => ["integer", "flag", "byte", "unsigned", "int64", "uint64", "items", "place"].includes(row.kind);
const isList = row => ["list", "items", "wires"].includes(row.kind);
const week_hours = 7 * 24;

class Reading {
    // `direction` is "read", or "written" for a message that is only written.
    constructor(source, table, direction) {
        this.source = source;
        this.direction = direction;
        this.findings = []; // what is refused and what is noted
        this.values = new Map(); // row -> what stands in the text: {element, text, fault}
        this.drawings = []; // {kind, row, element, path, ...}
        this.taken = new Set(); // the nodes that a key has taken
        this.walk(table, bodyOf(source.root), "");
        // What one reading of a body takes, the other may pass over.
        this.findings = this.findings.filter(({ stranger, element }) => !stranger || !this.taken.has(element));
        const order = ({ element }) => source.placeOf.get(element).outer;
        this.findings.sort((a, b) => order(a) - order(b));
        this.drawings.sort((a, b) => order(a) - order(b));
    }

    get refusals() {
        return this.findings.filter(finding => finding.refused).length;
    }

    refuse(node, path, reason, row) {
        const element = node.nodeType === Node.ELEMENT_NODE ? node : node.parentNode;
        this.findings.push({ refused: true, element, path, reason, row });
    }

    note(element, path, reason, row) {
        this.findings.push({ element, path, reason, row });
    }

    walk(table, element, path) {
        const rows = table.keys.filter(row => row[this.direction] && row.key !== null);
        const seen = new Map(rows.map(row => [row, []])); // the nodes that have answered to a row
        childrenFor(table, rows, element).forEach((node, place) => {
            const readers = readersAt(table, rows, node, place);
            if (readers.length === 0) this.stranger(table, node, path, rows, place);
            for (const row of readers) {
                this.taken.add(node);
                seen.get(row).push(node);
                this.child(row, node, `${path}${row.key}`, seen.get(row).length);
            }
        });
        if (this.direction === "read") this.missing(rows, seen, element, path.replace(/\/$/, ""));
        this.drawWhole(rows, element, path.replace(/\/$/, ""));
        for (const row of rows.filter(each => each.kind === "grid")) this.grid(row, rows, seen, `${path}${row.key}`);
    }

    missing(rows, seen, element, path) {
        for (const row of rows) {
            const count = seen.get(row).length;
            if (row.exactly && count < row.capacity)
                this.refuse(element, path, `there are ${count} of “${row.key}”, not ${row.capacity}`, row);
            else if (row.required && count === 0) this.refuse(element, path, `the child “${row.key}” is missing`, row);
        }
    }

    stranger(table, node, path, rows, place) {
        const name = nameOf(node);
        const near = nearest(
            name,
            rows.map(row => row.key),
        );
        const behind = table.names === "in_order" && place >= rows.length;
        if (behind || table.keys.some(row => !row.read && row.key === name)) return; // what stands behind the last one, and what the library itself writes, is passed over
        if (table.others_fail) {
            this.refuse(node, path + name, `no such child is accepted here${near}`);
        } else if (node.nodeType === Node.ELEMENT_NODE) {
            const reason = `no key answers to it: it has no effect${near}`;
            this.findings.push({ stranger: true, element: node, path: path + name, reason });
        }
    }

    child(row, node, path, count) {
        if (node.nodeType !== Node.ELEMENT_NODE) {
            this.refuse(node, path, "this is no element; a comment or text that answers to a key is refused", row);
            return;
        }
        if (node.nodeName.length < row.key.length)
            this.note(node, path, `“${node.nodeName}” is read as “${row.key}”`, row);
        if (row.skipped) return;
        if (isList(row) && row.capacity !== undefined && count > row.capacity) {
            const text = `the list is full: it has room for ${row.capacity}`;
            if (row.beyond === "refused") this.refuse(node, path, text, row);
            else
                this.note(node, path, `${text}; this one ${row.beyond === "ignored" ? "is ignored" : row.beyond}`, row);
            return;
        }
        const place = isList(row) ? `${path}[${count - 1}]` : path;
        if (row.record) {
            this.take(row, node, "", "");
            for (const table of [row.record, row.again].filter(Boolean)) this.walk(table, node, `${place}/`);
        } else if (row.kind !== "grid") {
            this.value(row, node, place);
        }
    }

    take(row, element, text, fault) {
        const taken = this.values.get(row) ?? [];
        taken.push({ element, text, fault });
        this.values.set(row, taken);
    }

    value(row, element, path) {
        const text = textOf(element);
        const fault = this.direction === "read" ? this.fault(row, text, element, path) : "";
        this.take(row, element, text ?? "", fault);
        if (fault !== "") this.refuse(element, path, fault, row);
        if ((row.kind === "view" && row.longest === week_hours) || /^[01]{168}$/.test(text))
            this.drawings.push({ kind: "week", row, element, path, text: text ?? "" });
    }

    fault(row, text, element, path) {
        if (isNumber(row)) return numberFault(row, text);
        if (row.kind === "real") return text === null ? "there is no text" : "";
        const seen = text ?? ""; // an element without a text has an empty one
        if (lengthFault(row, seen)) return lengthFault(row, seen);
        if (row.kind === "word" || row.accepts === "a word") return wordFault(row, seen);
        return row.kind === "mask" || row.kind === "events" ? this.setFault(row, seen, element, path) : "";
    }

    setFault(row, text, element, path) {
        const words = readable(row.words);
        const strange = strangeWords(row, text);
        if (strange.length > 0) {
            const near = nearest(strange[0], words);
            this.note(element, path, `no word of the set: ${strange.join(", ")}; it has no effect${near}`, row);
        }
        const some = words.some(word => fold(text).includes(fold(word)));
        return row.none_alone && some && /none/i.test(text) ? "“none” cannot stand beside other words" : "";
    }

    // Grids are read behind all other children.
    grid(row, rows, seen, path) {
        const element = seen.get(row).at(-1);
        if (element?.nodeType !== Node.ELEMENT_NODE) return;
        const last = key => seen.get(rows.find(each => each.key === key)).at(-1);
        const [columns, lines] = row.sides.map(key => Number(last(key) ? textOf(last(key)) : 0));
        const text = textOf(element) ?? "";
        const fault = lengthFault(row, text) || gridFault(columns, lines, text);
        this.take(row, element, text, fault);
        if (fault !== "") this.refuse(element, path, fault, row);
        else this.drawings.push({ kind: "grid", row, element, path, text, columns, rows: lines });
    }

    // Lists that are looked at as a whole: runs of hours, and days of a month.
    drawWhole(rows, element, path) {
        for (const row of rows) {
            const keys = row.record?.keys.map(each => each.key) ?? [];
            if (["weekDay", "beginHour", "endHour"].every(key => keys.includes(key)))
                this.drawings.push({ kind: "blocks", row, element, path });
            if (row.capacity === 31 && keys.join() === "index,type")
                this.drawings.push({ kind: "month", row, element, path });
        }
    }
}
