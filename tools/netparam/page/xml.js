// Texts of XML: their trees, where each element stands, and changes that keep everything else as it is.

// The tags of a well-formed text, and what may look like one.
const token =
    /<!--[^]*?-->|<!\[CDATA\[[^]*?\]\]>|<\?[^]*?\?>|<!DOCTYPE[^[>]*(?:\[[^]*?\])?[^>]*>|<(\/?)(?:"[^"]*"|'[^']*'|[^>"'])*>/g;

const linesIn = text => text.split("\n").length;

// For each element, in the order of the start tags: the text's range from `outer` to `close`, and that of what is
// between its tags.
function places(text) {
    const found = [];
    const open = [];
    let line = 1;
    let seen = 0;
    for (const match of text.matchAll(token)) {
        line += linesIn(text.slice(seen, match.index)) - 1;
        seen = match.index;
        if (match[1] === undefined) continue; // a comment or the like
        const end = match.index + match[0].length;
        if (match[1] === "/") {
            const place = open.pop();
            place.end = match.index;
            place.close = end;
            continue;
        }
        const place = { outer: match.index, start: end, end, close: end, line, empty: match[0].endsWith("/>") };
        found.push(place);
        if (!place.empty) open.push(place);
    }
    return found;
}

// Its tree and its elements' places, or why it is not well formed.
function parseText(text) {
    const blanks = text.length - text.trimStart().length;
    const tree = new DOMParser().parseFromString(text.trimStart(), "text/xml");
    const fault = tree.querySelector("parsererror");
    if (fault) {
        const told = fault.querySelector("div")?.textContent ?? fault.textContent; // browsers have their own ways to say it
        const [, line, reason] = /line (?:number )?(\d+)[^:]*:\s*([^\n]*)/i.exec(told) ?? [, 1, "it cannot be read"];
        return { fault: `line ${Number(line) + linesIn(text.slice(0, blanks)) - 1}: ${reason}` };
    }
    const all = places(text);
    const elements = [...tree.getElementsByTagName("*")];
    if (elements.length !== all.length) return { fault: "it holds elements in entities" };
    const placeOf = new Map(elements.map((element, i) => [element, all[i]]));
    return { text, root: tree.documentElement, placeOf };
}

// The message's element: the root, or the first element in it when the root is called "body".
const bodyOf = root => (root.nodeName.toLowerCase() === "body" ? root.firstElementChild : root);

const blank = node => node.nodeType === Node.TEXT_NODE && !/[^ \t\r\n]/.test(node.data);

// The nodes that the library sees: blanks between tags are none.
const nodesOf = element => [...element.childNodes].filter(node => !blank(node));

// The text that the library sees, blanks condensed; null where the element does not begin with a text.
function textOf(element) {
    const first = nodesOf(element)[0];
    if (first?.nodeType === Node.CDATA_SECTION_NODE) return first.data;
    return first?.nodeType === Node.TEXT_NODE ? first.data.replace(/[ \t\r\n]+/g, " ").trim() : null;
}

// What a node is compared with the keys by.
const nameOf = node => (node.nodeType === Node.ELEMENT_NODE ? node.nodeName : node.data);

// The text with another content between the element's tags.
function withContent(source, element, content) {
    const { start, end, empty } = source.placeOf.get(element);
    const head = empty ? source.text.slice(0, start - 2).trimEnd() + ">" : source.text.slice(0, start);
    return head + content + (empty ? `</${element.nodeName}>` : "") + source.text.slice(end);
}

// ... with these elements there, a line each, as far in as others of the text are.
function withElements(source, element, items) {
    const marginOf = each => /[ \t]*$/.exec(source.text.slice(0, source.placeOf.get(each).outer))[0];
    const margin = marginOf(element);
    const inner = element.firstElementChild ? marginOf(element.firstElementChild) : margin + "    ";
    const lines = items.map(item => `\n${inner}${item}`).join("");
    return withContent(source, element, items.length > 0 ? `${lines}\n${margin}` : "");
}
