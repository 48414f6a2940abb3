// A text beside a message's elements: what it says is shown in the elements' lines, what can be drawn is drawn.

const button = (name, onclick, className = "") => h("button", { type: "button", className, onclick }, name);
const shortened = text => (text.length > 26 ? text.slice(0, 24) + "…" : text);
const most_findings = 100;
const most_values = 6;

// Buttons that show a text as one of these messages.
const offers = (candidates, text) =>
    candidates.map(other => button(`Read it as ${other.name}`, () => openWith(other, text)));

class Workbench {
    // `lineOf` gives the line of a row.
    constructor(message, text, lineOf) {
        Object.assign(this, { message, lineOf, figures: [] });
        const plain = { spellcheck: false, wrap: "off", autocapitalize: "off", autocomplete: "off" };
        this.text = h("textarea", { ...plain, ariaLabel: `A text of ${message.name}` });
        this.printed = h("pre", { className: "printed" }); // a box to type in does not go from one sheet to the next
        this.verdict = h("p", { className: "verdict", role: "status" });
        this.findings = h("ol", { className: "findings" });
        this.drawings = h("div");
        this.element = h(
            "div",
            { className: "workbench" },
            this.bar(text),
            this.text,
            this.printed,
            this.verdict,
            this.findings,
            this.drawings,
        );
        this.text.addEventListener("input", () => this.update());
        this.load(text);
    }

    bar(text) {
        const { examples } = this.message;
        const given = examples.findIndex(example => example.text === text);
        const files = h("select", { ariaLabel: "Example" }, ...examples.map(({ file }) => h("option", {}, file)));
        files.addEventListener("change", () => this.load(examples[files.selectedIndex].text));
        const name = this.message.read ? code(examples[0]?.file ?? "") : `written from ${examples[0]?.file}`;
        const source = given < 0 ? "A text of yours" : examples.length > 1 ? files : name;
        const copy = button("Copy", () => this.copy(copy));
        return h(
            "div",
            { className: "bar" },
            h("span", {}, source),
            copy,
            button("Restore", () => this.load(this.given)),
        );
    }

    load(text) {
        this.given = text;
        this.text.value = text;
        this.update();
    }

    async copy(self) {
        try {
            await navigator.clipboard.writeText(this.text.value);
        } catch {
            this.text.select();
            document.execCommand("copy"); // where a page from a file may not use the clipboard
        }
        self.textContent = "Copied";
        setTimeout(() => self.replaceChildren("Copy"), 1500);
    }

    update() {
        this.text.rows = Math.min(Math.max(linesIn(this.text.value), 4), 22);
        this.printed.textContent = this.text.value;
        this.source = parseText(this.text.value);
        const body = this.source.fault ? null : bodyOf(this.source.root);
        if (this.source.fault) this.say("refused", `This is not well-formed XML: ${this.source.fault}`);
        else if (body === null) this.say("refused", "The body holds no message.");
        if (body === null) {
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
        const notes = reading.findings.length - reading.refusals;
        if (!bears(this.message, body)) this.say("refused", ...this.wrongRoot(body));
        else if (!this.message.read)
            this.say("", "This message is only written: the text is what the library makes of a payload.");
        else if (reading.refusals > 0)
            this.say("refused", `${counted(reading.refusals, "fault")}: the library refuses this text.`);
        else this.say("accepted", `Names, ranges and words fit${notes > 0 ? `; ${counted(notes, "note")}` : ""}.`);
        const beside = body === this.source.root ? [] : [...this.source.root.children].filter(each => each !== body);
        if (beside.length > 0)
            this.verdict.append(` Unread beside ${body.nodeName}: ${beside.map(each => each.nodeName).join(", ")}.`);
    }

    wrongRoot(body) {
        const { name, element } = this.message;
        const { candidates } = recognise(this.source);
        return [`The root is ${body.nodeName}, that of ${name} is ${element}. `, ...offers(candidates, this.text.value)];
    }

    show(reading) {
        const more = reading.findings.length - most_findings;
        this.findings.replaceChildren(...reading.findings.slice(0, most_findings).map(each => this.finding(each)));
        if (more > 0) this.findings.append(h("li", {}, `and ${more} more`));
        for (const [row, line] of this.lineOf) showValues(row, line, reading.values.get(row) ?? []);
        this.draw(reading.drawings);
    }

    // Drawings that are still there stay, with the cell that is being worked on.
    draw(drawings) {
        const alike = (a, b) => ["kind", "path", "columns", "rows"].every(key => a[key] === b?.[key]);
        if (
            drawings.length === this.figures.length &&
            drawings.every((each, i) => alike(each, this.figures[i].drawing))
        ) {
            this.figures.forEach((figure, i) => figure.follow(drawings[i]));
            return;
        }
        this.figures = drawings.map(drawing => new Figure(drawing, write => this.edit(write)));
        this.drawings.replaceChildren(...this.figures.map(({ element }) => element));
    }

    edit(write) {
        this.text.value = write(this.source);
        this.update();
    }

    finding({ refused, element, path, reason, row }) {
        const place = this.source.placeOf.get(element);
        const go = button(`line ${place.line}`, () => this.select(place), "line");
        const accepts = refused && row?.accepts ? h("span", { className: "note" }, `Accepts ${acceptedBy(row)}`) : "";
        const kind = h("strong", {}, refused ? "Refused " : "Note ");
        return h("li", { className: refused ? "refused" : "" }, kind, go, " ", code(path), `: ${reason}`, accepts);
    }

    select({ outer, close, line }) {
        this.text.focus();
        this.text.setSelectionRange(outer, close);
        this.text.scrollTop = (this.text.scrollHeight * (line - 3)) / linesIn(this.text.value);
    }
}

// What the text has for a row, in the row's line.
function showValues(row, line, values) {
    const cell = line.querySelector("td.text");
    const filled = values.filter(({ text }) => text !== "");
    const texts = filled
        .slice(0, most_values)
        .map(({ text, fault }) =>
            h("span", { className: fault ? "value refused" : "value", title: fault }, shortened(text)),
        );
    cell.replaceChildren(...texts.flatMap((text, i) => (i > 0 ? [", ", text] : [text])));
    if (row.record && isList(row) && values.length > 0) cell.prepend(counted(values.length, "item"));
    if (filled.length > most_values)
        cell.append(h("span", { className: "more" }, ` and ${filled.length - most_values} more`));
    cell.classList.toggle("empty", cell.childNodes.length === 0);
    line.classList.toggle(
        "refused",
        values.some(({ fault }) => fault),
    );
}
