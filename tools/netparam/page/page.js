// The page: its list, its views, and what the address and the keyboard do.

const grouped = number => String(number).replace(/\B(?=(\d{3})+$)/g, "\u202f");
const byId = id => document.getElementById(id);

// An element; texts among `children` stay texts, whatever is in them.
function h(name, properties = {}, ...children) {
    const element = document.createElement(name);
    for (const [key, value] of Object.entries(properties))
        if (value === "" || value === undefined)
            continue;
        else if (key.startsWith("aria"))
            element.setAttribute(`aria-${key.slice(4).toLowerCase()}`, value);
        else if (key in element && key !== "role")
            element[key] = value;
        else
            element.setAttribute(key, value);
    element.append(...children.flat());
    return element;
}

// Prose with `code` in it.
const prose = text => text.split("`").map((part, i) => i % 2 ? h("code", {}, part) : part);
const link = (path, ...children) => h("a", { href: `#${path}` }, ...children);
const code = text => h("code", {}, text);

// The list ------------------------------------------------------------------------------------------

function entryOf({ message, hit }) {
    const where = hit && hit.kind !== "" ? h("span", { className: "hit" }, `${hit.kind} `, code(hit.text)) : "";
    return h("li", {}, link(message.name, h("span", { className: "name" }, message.name), " ", h("span", { className: "title" }, message.title), where));
}

function showList(typed) {
    const found = typed.trim() === "" ? null : search(typed);
    byId("hits").textContent = found === null ? "" : found.length === 1 ? "1 message" : `${found.length} messages`;
    if (found !== null) {
        byId("list").replaceChildren(h("ul", {}, ...found.map(entryOf)));
    } else {
        const families = [...new Set(messages.map(familyOf))].sort();
        byId("list").replaceChildren(...families.map(family => h("section", {}, h("h2", {}, family),
            h("ul", {}, ...messages.filter(message => familyOf(message) === family).map(message => entryOf({ message }))))));
    }
    document.body.classList.toggle("searching", found !== null);
    markCurrent();
}

function markCurrent() {
    for (const each of byId("list").querySelectorAll("a")) {
        const here = each.hash.slice(1) === location.hash.slice(1).split("/")[0];
        if (here)
            each.setAttribute("aria-current", "page");
        else
            each.removeAttribute("aria-current");
    }
}

// A message -----------------------------------------------------------------------------------------

function factsOf(message) {
    const fact = (name, ...texts) => h("div", {}, h("dt", {}, name), h("dd", {}, ...texts));
    const table = message.read ?? message.written;
    return h("dl", { className: "facts" },
        message.id !== null ? fact("Id", String(message.id)) : "",
        fact("Payload", ...table && !message.payload ? [code(table.type), ", "] : [], `${grouped(message.size)} bytes`),
        fact("Prepared by", ...message.initialiser ? [code(message.initialiser)] : ["the host"]),
        message.parser ? fact("Read by", code(message.parser), message.read_check ? `: ${message.read_check}` : "") : "",
        message.writer ? fact("Written by", code(message.writer), ...message.root ? [" as ", code(message.root)] : [],
            message.write_check ? `: ${message.write_check}` : ", which writes nothing") : "");
}

function wordsOf({ words, kind, type }) {
    const bits = kind === "mask" || type === "unsigned int";
    const use = { read: " (only read)", write: " (only written)", whole: " (only as a whole)", both: "" };
    const list = h("ul", { className: "words" }, ...words.map(entry => h("li", {},
        code(entry.word === "" ? "“”" : entry.word), ` ${bits ? "0x" + (entry.code >>> 0).toString(16) : entry.code}${use[entry.use]}`)));
    return words.length > 16 ? h("details", {}, h("summary", {}, `${words.length} words`), list) : list;
}

const offsetOf = ({ offset, steps }) => offset === null ? [""]
    : [grouped(offset), ...steps.map(step => h("span", { className: "step" }, ` + i × ${grouped(step)}`))];

// One row for each element of a table. `prefix` makes the rows' addresses; without one they have none.
function elementTable(table, prefix, writes) {
    const cell = (label, ...children) => {
        const filled = children.flat().some(child => child !== "");
        return h("td", { role: "cell", className: label + (filled ? "" : " empty") }, ...children);
    };
    const taken = new Set(), kept = rowsOf(table).some(({ row }) => row.member);
    const lines = rowsOf(table).map(place => {
        const { row, path, depth } = place;
        let id = prefix ? `${prefix}/${path}` : "";
        while (id !== "" && taken.has(id))
            id += "~";
        taken.add(id);
        const orders = writes && row.written && row.record?.order.length > 1 ? [`written in this order: ${row.record.order.join(", ")}`] : [];
        const inside = [row.record, row.again].filter(Boolean).flatMap(inner => inner.notes).map(note => `children: ${note}`);
        const name = row.key === null ? h("span", { className: "none" }, "no element") : id !== "" ? link(id, code(row.key)) : code(row.key);
        const line = h("tr", { role: "row", id },
            h("th", { scope: "row", role: "rowheader" }, h("span", { className: "indent" }), name, row.required ? h("span", { className: "required" }, " required") : ""),
            cell("text"),
            cell("accepts", row.accepts ? capital(row.accepts) : "", row.words ? wordsOf(row) : "",
                ...[...row.notes.filter(note => note !== "required"), ...inside, ...orders].map(note => h("p", { className: "note" }, capital(note)))),
            ...kept ? [cell("member", row.member ? [code(row.member), " ", h("span", { className: "type" }, row.type)] : ""),
                cell("offset", ...offsetOf(place)),
                cell("bytes", row.bytes ? grouped(row.bytes) : "")] : []);
        line.style.setProperty("--depth", depth);
        if (row.member)
            Object.assign(line.dataset, { path, offset: place.offset ?? "" });
        return { row, line };
    });
    const heading = (text, className) => h("th", { scope: "col", role: "columnheader", className }, text);
    const element = h("table", { className: "elements", role: "table" }, h("caption", {}, `Elements of ${prefix || table.type}`),
        h("thead", { role: "rowgroup" }, h("tr", { role: "row" }, heading("Element", ""), heading("In the text", "text"), heading("Accepts", "accepts"),
            ...kept ? [heading("Member", "member"), heading("Offset", "offset"), heading("Bytes", "bytes")] : [])),
        h("tbody", { role: "rowgroup" }, ...lines.map(({ line }) => line)));
    return { element, lineOf: new Map(lines.map(({ row, line }) => [row, line])) };
}

function notesOf(table, writes) {
    const order = writes && table.order.length > 1 ? [`written in this order: \`${table.order.join("`, `")}\``] : [];
    return h("ul", { className: "notes" }, ...[...table.notes, ...order].map(note => h("li", {}, ...prose(capital(note) + "."))));
}

function memberTable(members) {
    return h("table", { className: "members" }, h("caption", {}, "Members of the payload"),
        h("thead", {}, h("tr", {}, ...["Member", "Type", "Words", "Offset", "Bytes"].map(text => h("th", { scope: "col", className: fold(text) }, text)))),
        h("tbody", {}, ...membersOf(members).map(member => {
            const line = h("tr", {}, h("th", { scope: "row" }, h("span", { className: "indent" }), code(member.member)), h("td", {}, member.type),
                h("td", {}, member.words ? wordsOf(member) : ""), h("td", { className: "offset" }, grouped(member.offset)), h("td", { className: "bytes" }, grouped(member.bytes)));
            line.style.setProperty("--depth", member.depth);
            return line;
        })));
}

// A text beside the table: what it says is shown in the table's rows, what can be drawn is drawn below it.
class Workbench {
    constructor(message, text, lineOf) {
        Object.assign(this, { message, lineOf, figures: [], given: text });
        this.text = h("textarea", { spellcheck: false, wrap: "off", autocapitalize: "off", autocomplete: "off", ariaLabel: `A text of ${message.name}` });
        this.text.value = text;
        this.printed = h("pre", { className: "printed" }); // a box to type in does not go from one sheet to the next
        this.verdict = h("p", { className: "verdict", role: "status" });
        this.findings = h("ol", { className: "findings" });
        this.drawings = h("div", { className: "drawings" });
        const button = (name, onclick) => h("button", { type: "button", onclick }, name);
        const copy = button("Copy", () => this.copy(copy));
        const files = message.examples.length > 1 ? h("select", { ariaLabel: "Example", onchange: () => this.load(message.examples[files.selectedIndex].text) },
            ...message.examples.map(({ file }) => h("option", {}, file))) : code(message.examples[0]?.file ?? "");
        this.element = h("div", { className: "workbench" },
            h("div", { className: "bar" }, files, copy, button("Restore", () => this.load(this.given))),
            this.text, this.printed, this.verdict, this.findings, this.drawings);
        this.text.addEventListener("input", () => this.update());
        this.update();
    }

    load(text) {
        this.given = text;
        this.text.value = text;
        this.update();
    }

    async copy(button) {
        try {
            await navigator.clipboard.writeText(this.text.value);
        } catch {
            this.text.select();
            document.execCommand("copy"); // where a page from a file may not use the clipboard
        }
        button.textContent = "Copied";
        setTimeout(() => { button.textContent = "Copy"; }, 1500);
    }

    update() {
        this.text.rows = Math.min(Math.max(linesIn(this.text.value), 4), 22);
        this.printed.textContent = this.text.value;
        this.source = parseText(this.text.value);
        const body = this.source.fault ? null : bodyOf(this.source.root);
        if (body === null) {
            this.say("refused", this.source.fault ? `This is not well-formed XML: ${this.source.fault}` : "The body holds no message.");
            this.show({ values: new Map(), findings: [], drawings: [] });
            return;
        }
        const reading = new Reading(this.source, tableOf(this.message), directionOf(this.message));
        this.judge(reading, body);
        this.show(reading);
    }

    say(state, ...text) {
        this.verdict.className = `verdict ${state}`;
        this.verdict.replaceChildren(...text);
    }

    judge(reading, body) {
        const { message } = this, notes = reading.findings.length - reading.refusals;
        const others = recognise(this.source).filter(other => other !== message);
        if (message.roots.length > 0 && !message.roots.some(root => fold(root) === fold(body.nodeName)))
            this.say("refused", `The root is ${body.nodeName}, that of ${message.name} is ${message.roots.join(" or ")}. `,
                ...others.slice(0, 1).flatMap(other => [h("button", { type: "button", onclick: () => openWith(other, this.text.value) }, `Read it as ${other.name}`)]));
        else if (!message.read)
            this.say("", "This message is only written: the text is what the library makes of a payload.");
        else if (reading.refusals > 0)
            this.say("refused", `${reading.refusals} ${reading.refusals === 1 ? "fault" : "faults"}: the library refuses this text.`);
        else
            this.say("accepted", `Names, ranges and words fit${notes > 0 ? `; ${notes} ${notes === 1 ? "note" : "notes"}` : ""}.`);
        const beside = body.parentNode.nodeType === Node.ELEMENT_NODE ? [...body.parentNode.children].filter(each => each !== body) : [];
        if (beside.length > 0)
            this.verdict.append(` Beside ${body.nodeName} stands, unread: ${beside.map(each => each.nodeName).join(", ")}.`);
    }

    show(reading) {
        const most = 100, more = reading.findings.length - most;
        this.findings.replaceChildren(...reading.findings.slice(0, most).map(finding => this.finding(finding)),
            ...more > 0 ? [h("li", {}, `and ${more} more`)] : []);
        for (const [row, line] of this.lineOf)
            this.showValues(row, line, reading.values.get(row) ?? []);
        const same = reading.drawings.length === this.figures.length && reading.drawings.every((drawing, i) =>
            ["kind", "path", "columns", "rows"].every(key => drawing[key] === this.figures[i].drawing[key]));
        if (same) {
            this.figures.forEach((figure, i) => figure.follow(reading.drawings[i]));
            return;
        }
        this.figures = reading.drawings.map(drawing => new Figure(drawing, write => this.edit(write)));
        this.drawings.replaceChildren(...this.figures.map(({ element }) => element));
    }

    edit(write) {
        this.text.value = write(this.source);
        this.update();
    }

    finding({ refused, element, path, reason, row }) {
        const place = this.source.placeOf.get(element);
        const go = h("button", { type: "button", className: "line", onclick: () => this.select(place) }, `line ${place.line}`);
        return h("li", { className: refused ? "refused" : "noted" }, h("strong", {}, refused ? "Refused " : "Note "), go, " ", code(path), `: ${reason}`,
            refused && row?.accepts ? h("span", { className: "note" }, `Accepts ${row.accepts}`) : "");
    }

    select({ outer, close, line }) {
        this.text.focus();
        this.text.setSelectionRange(outer, close);
        this.text.scrollTop = this.text.scrollHeight * (line - 3) / linesIn(this.text.value);
    }

    showValues(row, line, values) {
        const cell = line.querySelector("td.text"), most = 6;
        const texts = values.filter(({ text }) => text !== "").map(({ text, fault }) =>
            h("span", { className: fault ? "value refused" : "value", title: fault }, text.length > 26 ? text.slice(0, 24) + "…" : text));
        const more = texts.length > most ? [h("span", { className: "more" }, ` and ${texts.length - most} more`)] : [];
        const count = row.record && isList(row) && values.length > 0 ? [`${values.length} ${values.length === 1 ? "item" : "items"}`] : [];
        cell.replaceChildren(...count, ...texts.slice(0, most).flatMap((text, i) => i > 0 ? [", ", text] : [text]), ...more);
        cell.classList.toggle("empty", cell.childNodes.length === 0);
        line.classList.toggle("refused", values.some(({ fault }) => fault));
        line.classList.toggle("absent", values.length === 0);
    }
}

// `text` takes the example's place. On the page with everything there is no workbench.
function messageView(message, { text, level = 1 } = {}) {
    const top = `h${level}`, sub = `h${level + 1}`, alone = level === 1;
    const written = message.read !== null && message.written !== null;
    const main = tableOf(message) && elementTable(tableOf(message), message.name, !written && message.writer);
    const section = (heading, ...children) => h("section", {}, h(sub, {}, heading), ...children);
    const example = text ?? message.examples[0]?.text ?? "";
    return h("article", { className: "message", id: alone ? "" : message.name },
        h(top, { tabIndex: -1 }, message.name),
        h("p", { className: "lead" }, h("strong", {}, `${titleOf(message)}.`), ` ${message.summary}`),
        factsOf(message),
        section("Example", alone && main ? new Workbench(message, example, main.lineOf).element : h("pre", {}, example)),
        main ? section(message.read ? "Elements" : "What is written", notesOf(tableOf(message), !written && message.writer), main.element) : "",
        written ? section("What is written", notesOf(message.written, true), elementTable(message.written, "", true).element) : "",
        message.payload ? section("What the payload holds", memberTable(message.payload)) : "");
}

// Views ---------------------------------------------------------------------------------------------

let opened = null; // a text that is shown instead of a message's example

function openWith(message, text) {
    opened = { message, text };
    if (location.hash === `#${message.name}`)
        route();
    else
        location.hash = message.name;
}

function homeView() {
    const view = byId("home").content.cloneNode(true);
    const paste = view.getElementById("paste"), verdict = view.getElementById("paste-verdict");
    paste.addEventListener("input", () => {
        const source = paste.value.trim() === "" ? null : parseText(paste.value);
        verdict.textContent = source?.fault ? `This is not well-formed XML: ${source.fault}` : "";
        if (source === null || source.fault)
            return;
        const found = bodyOf(source.root) === null ? [] : recognise(source);
        if (found.length > 0)
            openWith(found[0], paste.value);
        else
            verdict.textContent = `No message is known by the root element ${source.root.nodeName}.`;
    });
    return [view];
}

function unknownView(name) {
    const near = search(name).slice(0, 5);
    return [h("h1", { tabIndex: -1 }, "No such message"), h("p", {}, `There is no message “${name}”. `, link("", "All messages")),
        h("ul", {}, ...near.map(entryOf))];
}

const everythingView = () => [h("h1", { tabIndex: -1 }, "All messages"), ...messages.map(message => messageView(message, { level: 2 }))];

let shown = null; // the address of the view

function route() {
    const address = decodeURIComponent(location.hash.slice(1)), [name] = address.split("/");
    if (name !== shown || opened !== null) {
        const message = messageOf.get(name);
        const text = opened?.message === message ? opened?.text : undefined;
        const view = name === "" ? homeView() : name === "all" ? everythingView() : message ? [messageView(message, { text })] : unknownView(name);
        document.body.dataset.view = name === "" ? "home" : name === "all" ? "all" : "message";
        document.title = message ? `${name}: ${message.title}` : "Messages";
        byId("main").replaceChildren(...view);
        if (shown !== null && document.activeElement !== byId("query"))
            byId("main").querySelector("h1").focus({ preventScroll: true });
        shown = name;
        opened = null;
        scrollTo(0, 0);
    }
    markCurrent();
    byId("list").querySelector("[aria-current]")?.scrollIntoView({ block: "nearest" });
    const target = address.includes("/") ? byId(address) : null;
    byId("main").querySelector("tr.target")?.classList.remove("target");
    target?.classList.add("target");
    target?.scrollIntoView({ block: "center" });
}

// Light and dark ------------------------------------------------------------------------------------

const themes = ["auto", "light", "dark"];

function setTheme(theme) {
    document.documentElement.dataset.theme = theme;
    byId("theme").textContent = `Theme: ${theme}`;
    try {
        localStorage.setItem("theme", theme);
    } catch {
        // a page from a file may not be allowed to keep anything
    }
}

function storedTheme() {
    try {
        return themes.find(theme => theme === localStorage.getItem("theme")) ?? "auto";
    } catch {
        return "auto";
    }
}

// Keyboard ------------------------------------------------------------------------------------------

const isTyping = element => element.matches("input, textarea, select");

function stepThroughList(event) {
    const links = [...byId("list").querySelectorAll("a")], at = links.indexOf(document.activeElement);
    const to = event.key === "ArrowDown" ? at + 1 : at - 1;
    if (document.activeElement !== byId("query") && at < 0)
        return;
    event.preventDefault();
    if (to < 0)
        byId("query").focus();
    else
        links[Math.min(to, links.length - 1)]?.focus();
}

document.addEventListener("keydown", event => {
    if (event.key === "/" && !isTyping(event.target)) {
        event.preventDefault();
        byId("query").focus();
        byId("query").select();
    } else if (event.key === "Escape" && event.target === byId("query")) {
        byId("query").value = "";
        showList("");
    } else if (event.key === "Enter" && event.target === byId("query")) {
        byId("list").querySelector("a")?.click();
    } else if (event.key === "ArrowDown" || event.key === "ArrowUp") {
        stepThroughList(event);
    }
});

byId("query").addEventListener("input", event => showList(event.target.value));
byId("list").addEventListener("click", event => {
    if (event.target.closest("a"))
        document.body.classList.remove("searching");
});
byId("theme").addEventListener("click", () => setTheme(themes[(themes.indexOf(document.documentElement.dataset.theme) + 1) % themes.length]));
addEventListener("hashchange", route);

byId("version").textContent = data.version;
setTheme(storedTheme());
showList("");
route();
