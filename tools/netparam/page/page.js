// The page: its list, its views, and what the address and the keyboard do.

// The list ------------------------------------------------------------------------------------------

function entryOf({ message, hit }) {
    const where = hit && hit.kind !== "" ? h("span", { className: "hit" }, `${hit.kind} `, code(hit.text)) : "";
    return h(
        "li",
        {},
        link(
            message.name,
            h("span", { className: "name" }, message.name),
            " ",
            h("span", { className: "title" }, message.title),
            where,
        ),
    );
}

function showList(typed) {
    const found = typed.trim() === "" ? null : search(typed);
    byId("hits").textContent = found === null ? "" : counted(found.length, "message");
    const list = entries => h("ul", {}, ...entries.map(entryOf));
    const section = family => {
        const members = messages.filter(message => familyOf(message) === family).map(message => ({ message }));
        return h("section", {}, h("h2", {}, family), list(members));
    };
    if (found !== null) byId("list").replaceChildren(list(found));
    else byId("list").replaceChildren(...[...new Set(messages.map(familyOf))].sort().map(section));
    document.body.classList.toggle("searching", found !== null);
    markCurrent();
}

function markCurrent() {
    for (const each of byId("list").querySelectorAll("a")) {
        const here = each.hash.slice(1) === location.hash.slice(1).split("/")[0];
        if (here) each.setAttribute("aria-current", "page");
        else each.removeAttribute("aria-current");
    }
}

// A message -----------------------------------------------------------------------------------------

// `text` takes the example's place. Below other headings there is no workbench, but the example alone.
function messageView(message, { text = message.examples[0]?.text ?? "", level = 1 } = {}) {
    const alone = level === 1;
    const table = tableOf(message);
    const both = message.read !== null && message.written !== null;
    const writes = message.writer !== null && !both;
    const main = table && elementTable(table, { prefix: alone ? message.name : "", writes, shows: alone });
    const section = (title, ...children) => h("section", {}, h(`h${level + 1}`, {}, title), ...children);
    const example = alone && main ? new Workbench(message, text, main.lineOf).element : h("pre", {}, text);
    const written = () => [notesOf(message.written, true), elementTable(message.written, { writes: true }).element];
    return h(
        "article",
        { className: "message" },
        h(`h${level}`, { tabIndex: -1 }, message.name),
        h("p", { className: "lead" }, h("strong", {}, `${capital(message.title)}.`), ` ${message.summary}`),
        factsOf(message),
        section("Example", example),
        main ? section(message.read ? "Elements" : "What is written", notesOf(table, writes), main.element) : "",
        both ? section("What is written", ...written()) : "",
        message.payload ? section("What the payload holds", memberTable(message.payload)) : "",
    );
}

// Views ---------------------------------------------------------------------------------------------

let opened = null; // a text that is shown instead of a message's example

function openWith(message, text) {
    opened = { message, text };
    if (location.hash === `#${message.name}`) route();
    else location.hash = message.name;
}

function homeView() {
    const view = byId("home").content.cloneNode(true);
    const paste = view.getElementById("paste");
    const verdict = view.getElementById("paste-verdict");
    paste.addEventListener("input", () => {
        const source = paste.value.trim() === "" ? null : parseText(paste.value);
        verdict.textContent = source?.fault ? `This is not well-formed XML: ${source.fault}` : "";
        if (source === null || source.fault) return;
        if (bodyOf(source.root) === null) {
            verdict.textContent = "The body holds no message.";
            return;
        }
        const { message, candidates, reason } = recognise(source);
        if (message !== null) openWith(message, paste.value);
        else verdict.replaceChildren(reason, ...offers(candidates, paste.value));
    });
    return [view];
}

function unknownView(name) {
    const near = search(name).slice(0, 5);
    return [
        h("h1", { tabIndex: -1 }, "No such message"),
        h("p", {}, `There is no message “${name}”. `, link("", "All messages")),
        h("ul", {}, ...near.map(entryOf)),
    ];
}

const everythingView = () => [
    h("h1", { tabIndex: -1 }, "All messages"),
    ...messages.map(message => messageView(message, { level: 2 })),
];

const views = { "": homeView, all: everythingView };

let shown = null; // the name of the view

function addressed() {
    try {
        return decodeURIComponent(location.hash.slice(1));
    } catch {
        return location.hash.slice(1); // no name of ours has a "%"
    }
}

function route() {
    const address = addressed();
    const [name] = address.split("/");
    if (name !== shown || opened !== null) {
        const message = messageOf.get(name);
        const text = opened?.message === message ? opened?.text : undefined;
        const view = views[name] ?? (message ? () => [messageView(message, { text })] : () => unknownView(name));
        document.body.dataset.view = name === "" ? "home" : "message";
        document.title = message ? `${name}: ${message.title}` : "Messages";
        byId("main").replaceChildren(...view());
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
    const links = [...byId("list").querySelectorAll("a")];
    const at = links.indexOf(document.activeElement);
    const to = event.key === "ArrowDown" ? at + 1 : at - 1;
    if (document.activeElement !== byId("query") && at < 0) return;
    event.preventDefault();
    if (to < 0) byId("query").focus();
    else links[Math.min(to, links.length - 1)]?.focus();
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
    if (event.target.closest("a")) document.body.classList.remove("searching");
});
byId("theme").addEventListener("click", () =>
    setTheme(themes[(themes.indexOf(document.documentElement.dataset.theme) + 1) % themes.length]),
);
addEventListener("hashchange", route);

byId("version").textContent = data.version;
setTheme(storedTheme());
showList("");
route();
