// Elements made by hand: nothing that is shown is ever read as HTML.

const grouped = number => String(number).replace(/\B(?=(\d{3})+$)/g, "\u202f");
const byId = id => document.getElementById(id);

// An element; texts among `children` stay texts, whatever is in them.
function h(name, properties = {}, ...children) {
    const element = document.createElement(name);
    for (const [key, value] of Object.entries(properties))
        if (value === "" || value === undefined) continue;
        else if (key.startsWith("aria")) element.setAttribute(`aria-${key.slice(4).toLowerCase()}`, value);
        else if (key in element && key !== "role") element[key] = value;
        else element.setAttribute(key, value);
    element.append(...children.flat());
    return element;
}

// Prose with `code` in it.
const prose = text => text.split("`").map((part, i) => (i % 2 ? h("code", {}, part) : part));
const link = (path, ...children) => h("a", { href: `#${path}` }, ...children);
const code = text => h("code", {}, text);
const counted = (count, one) => `${count} ${count === 1 ? one : one + "s"}`;
