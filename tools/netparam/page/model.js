// The messages, what can be found in them, and where their members lie.

const data = JSON.parse(document.getElementById("data").textContent);
const messages = data.messages.sort((a, b) => (a.name < b.name ? -1 : 1));
const messageOf = new Map(messages.map(message => [message.name, message]));

// The families, by domain; a domain without a title stands under its own name.
const family_titles = {
    alarm: "Alarm and detection",
    network: "Network",
    osd: "Picture overlay",
    ptz: "Pan, tilt, zoom",
    recode: "Recording",
    replay: "Search and replay",
    snap: "Still pictures",
    stream: "Live view and encoding",
    support: "Device and system",
    system: "Device and system",
    timelapse: "Time-lapse",
    user: "Users and login",
};
const familyOf = message => family_titles[message.domain] ?? message.domain;

const capital = text => text.charAt(0).toUpperCase() + text.slice(1);

// The table by which a text is checked: that of the body, or of what is written where nothing is read.
const tableOf = message => message.read ?? message.written;
const directionOf = message => (message.read ? "read" : "written");
const tablesOf = message => [message.read, message.written].filter(table => table !== null);

// A table's rows in reading order: {row, path, depth, offset, step}. `offset` is the payload's, or null when it is
// not known; `step` are the sizes of the list items around the row.
function rowsOf(table, path = "", depth = 0, base = 0, steps = []) {
    return table.keys.flatMap(row => {
        const place = path + (row.key ?? row.member);
        const offset = base === null || row.offset === undefined ? null : base + row.offset;
        const own = { row, path: place, depth, offset, steps };
        return [
            own,
            ...[row.record, row.again]
                .filter(Boolean)
                .flatMap(inner =>
                    rowsOf(
                        inner,
                        place + "/",
                        depth + 1,
                        innerBase(table, row, inner, base, offset),
                        innerSteps(row, steps),
                    ),
                ),
        ];
    });
}

// Elements without a member of their own may still hold members of the record around them.
const innerBase = (table, row, inner, base, offset) =>
    offset ?? (row.offset === undefined && inner.type === table.type ? base : null);

const isRepeated = row => ["list", "wires"].includes(row.kind) && row.capacity > 1;
const innerSteps = (row, steps) => (isRepeated(row) && row.bytes ? [...steps, row.bytes / row.capacity] : steps);

const membersOf = (members, base = 0, depth = 0) =>
    members.flatMap(member => [
        { ...member, offset: base + member.offset, depth },
        ...membersOf(member.record ?? [], base + member.offset, depth + 1),
    ]);

// A week that the payload keeps as seven numbers, a bit an hour, stands in its members under the element's key.
for (const message of messages) {
    const masks = membersOf(message.payload ?? [])
        .filter(member => member.type === "int[7]")
        .map(member => member.name);
    for (const { row } of tablesOf(message).flatMap(table => rowsOf(table))) row.masks = masks.includes(row.key);
}

// Everything that can be searched for, the most telling first: [kind, texts]. What is shown of a message anyway has no
// kind.
function searchable(message) {
    const rows = tablesOf(message).flatMap(table => rowsOf(table).map(({ row }) => row));
    const types = [...tablesOf(message), ...rows].map(({ type }) => type?.replace(/\[.*/, ""));
    return [
        ["", [message.name, message.title, message.id === null ? "" : String(message.id)]],
        ["root", [message.element]],
        ["key", rows.map(row => row.key)],
        ["", [message.summary]],
        ["structure", types],
        ["member", rows.map(row => row.member)],
        ["function", [message.initialiser, message.parser, message.writer]],
        ["word", rows.flatMap(row => row.words ?? []).map(entry => entry.word)],
    ];
}

const terms = messages.map(message => ({
    message,
    known: searchable(message).flatMap(([kind, texts]) =>
        [...new Set(texts.filter(Boolean))].map(text => ({ kind, text, folded: fold(text) })),
    ),
}));

// Messages in which each of the typed words is found, best first: {message, hit}.
function search(typed) {
    const words = fold(typed).split(/\s+/).filter(Boolean);
    const found = [];
    for (const { message, known } of terms) {
        const hits = words.map(word => bestHit(known, word));
        if (hits.every(Boolean))
            found.push({ message, hit: hits.at(-1), score: hits.reduce((sum, { score }) => sum + score, 0) });
    }
    return found.sort((a, b) => a.score - b.score || (a.message.name < b.message.name ? -1 : 1));
}

// The lower its score, the better.
function bestHit(known, word) {
    let best = null;
    known.forEach(({ kind, text, folded }, rank) => {
        const at = folded.indexOf(word);
        if (at < 0) return;
        const score = (kind === "" ? 0 : 1000) + (folded === word ? 0 : at === 0 ? 200 : 400) + Math.min(rank, 190);
        if (best === null || score < best.score) best = { kind, text, score };
    });
    return best;
}

const bears = ({ element }, body) => element !== null && answers.whole(body.nodeName, element);

function knowsChildren(message, body) {
    const keys = tableOf(message).keys.filter(row => row[directionOf(message)] && row.key !== null);
    const known = child => keys.some(({ key }) => answers.whole(child.nodeName, key));
    return body.children.length > 0 && [...body.children].every(known);
}

// What a text may be, as the inspector finds it: the message of its root element, or of several the one that has a key
// for each child; else `candidates` have the root, or if none has, the keys.
function recognise(source) {
    const body = bodyOf(source.root);
    const bearing = messages.filter(message => bears(message, body));
    const read = bearing.filter(message => message.read);
    const of_root = read.length > 0 ? read : bearing;
    const fitting = (of_root.length > 0 ? of_root : messages.filter(message => message.read)).filter(message =>
        knowsChildren(message, body),
    );
    if (of_root.length === 1) return { message: of_root[0], candidates: of_root };
    if (of_root.length > 1 && fitting.length === 1) return { message: fitting[0], candidates: fitting };
    const about = of_root.length > 0 ? "Several messages have" : "No message has";
    const but = of_root.length === 0 && fitting.length > 0 ? ", but keys for its children have" : "";
    const candidates = of_root.length > 0 ? of_root : fitting;
    const reason = `${about} the root element ${body.nodeName}${but}${candidates.length > 0 ? ": " : "."}`;
    return { message: null, candidates, reason };
}
