// A message's facts, its elements, and the members of its payload.

function factsOf(message) {
    const fact = (name, ...texts) => h("div", {}, h("dt", {}, name), h("dd", {}, ...texts));
    const table = message.read ?? message.written;
    return h(
        "dl",
        { className: "facts" },
        message.id !== null ? fact("Id", String(message.id)) : "",
        fact(
            "Payload",
            ...(table && !message.payload ? [code(table.type), ", "] : []),
            `${grouped(message.size)} bytes`,
        ),
        fact("Prepared by", ...(message.initialiser ? [code(message.initialiser)] : ["the host"])),
        message.parser
            ? fact("Read by", code(message.parser), message.read_check ? `: ${message.read_check}` : "")
            : "",
        message.writer
            ? fact(
                  "Written by",
                  code(message.writer),
                  ...(message.root ? [" as ", code(message.root)] : []),
                  message.write_check ? `: ${message.write_check}` : ", which writes nothing",
              )
            : "",
    );
}

function wordsOf({ words, kind, type }) {
    const bits = kind === "mask" || type === "unsigned int";
    const use = { read: " (only read)", write: " (only written)", whole: " (only as a whole)", both: "" };
    const list = h(
        "ul",
        { className: "words" },
        ...words.map(entry =>
            h(
                "li",
                {},
                code(entry.word === "" ? "“”" : entry.word),
                ` ${bits ? "0x" + (entry.code >>> 0).toString(16) : entry.code}${use[entry.use]}`,
            ),
        ),
    );
    return words.length > 16 ? h("details", {}, h("summary", {}, `${words.length} words`), list) : list;
}

const offsetOf = ({ offset, steps }) =>
    offset === null
        ? [""]
        : [grouped(offset), ...steps.map(step => h("span", { className: "step" }, ` + i × ${grouped(step)}`))];

const heading = (text, className) => h("th", { scope: "col", role: "columnheader", className }, text);

function cell(className, ...children) {
    const filled = children.flat().some(child => child !== "");
    return h("td", { role: "cell", className: className + (filled ? "" : " empty") }, ...children);
}

// What is unusual about a row and its children; whether it is required stands beside its name.
function notesOfRow(row, writes) {
    const notes = row.notes.filter(note => note !== "required");
    for (const inner of [row.record, row.again].filter(Boolean))
        notes.push(...inner.notes.map(note => `children: ${note}`));
    if (writes && row.written && row.record?.order.length > 1)
        notes.push(`written in this order: ${row.record.order.join(", ")}`);
    return notes.map(note => h("p", { className: "note" }, capital(note)));
}

// `id` is the row's address, if it has one.
function elementLine(place, id, { writes, shows, kept }) {
    const { row, path, depth } = place;
    const key = row.key === null ? h("span", { className: "none" }, "no element") : code(row.key);
    const name = row.key !== null && id !== "" ? link(id, key) : key;
    const required = row.required ? h("span", { className: "required" }, " required") : "";
    const line = h(
        "tr",
        { role: "row", id },
        h("th", { scope: "row", role: "rowheader" }, h("span", { className: "indent" }), name, required),
        shows ? cell("text") : "",
        cell("accepts", capital(row.accepts), row.words ? wordsOf(row) : "", ...notesOfRow(row, writes)),
        ...(kept
            ? [
                  cell("member", row.member ? [code(row.member), " ", h("span", { className: "type" }, row.type)] : ""),
                  cell("offset", ...offsetOf(place)),
                  cell("bytes", row.bytes ? grouped(row.bytes) : ""),
              ]
            : []),
    );
    line.style.setProperty("--depth", depth);
    if (row.member) Object.assign(line.dataset, { path, offset: place.offset ?? "" });
    return line;
}

// The elements of a table, a line each. `prefix` makes the lines' addresses, `writes` says that the table is written,
// too, `shows` that there is a column for a text. Returns the lines by their rows, too.
function elementTable(table, { prefix = "", writes = false, shows = false }) {
    const places = rowsOf(table);
    const ids = new Set();
    const lineOf = new Map();
    const kept = places.some(({ row }) => row.member);
    for (const place of places) {
        let id = prefix && `${prefix}/${place.path}`;
        while (id !== "" && ids.has(id)) id += "~"; // some keys stand in a table twice
        ids.add(id);
        lineOf.set(place.row, elementLine(place, id, { writes, shows, kept }));
    }
    const element = h(
        "table",
        { className: "elements", role: "table" },
        h("caption", {}, `Elements of ${prefix || table.type}`),
        h(
            "thead",
            { role: "rowgroup" },
            h(
                "tr",
                { role: "row" },
                heading("Element"),
                shows ? heading("In the text", "text") : "",
                heading(places.some(({ row }) => row.read) ? "Accepts" : "Values", "accepts"),
                ...(kept ? [heading("Member", "member"), heading("Offset", "offset"), heading("Bytes", "bytes")] : []),
            ),
        ),
        h("tbody", { role: "rowgroup" }, ...lineOf.values()),
    );
    return { element, lineOf };
}

function notesOf(table, writes) {
    const order = writes && table.order.length > 1 ? [`written in this order: \`${table.order.join("`, `")}\``] : [];
    return h(
        "ul",
        { className: "notes" },
        ...[...table.notes, ...order].map(note => h("li", {}, ...prose(capital(note) + "."))),
    );
}

function memberLine(member) {
    const line = h(
        "tr",
        {},
        h("th", { scope: "row" }, h("span", { className: "indent" }), code(member.member)),
        h("td", {}, member.type),
        h("td", {}, member.words ? wordsOf(member) : ""),
        h("td", { className: "offset" }, grouped(member.offset)),
        h("td", { className: "bytes" }, grouped(member.bytes)),
    );
    line.style.setProperty("--depth", member.depth);
    return line;
}

const memberTable = members =>
    h(
        "table",
        { className: "members" },
        h("caption", {}, "Members of the payload"),
        h(
            "thead",
            {},
            h("tr", {}, ...["Member", "Type", "Words", "Offset", "Bytes"].map(text => heading(text, fold(text)))),
        ),
        h("tbody", {}, ...membersOf(members).map(memberLine)),
    );
