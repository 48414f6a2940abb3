// Grids, weeks and months as tables of cells that the mouse and the keyboard change.

const weekdays = ["Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"];
const numbers = (count, first = 0) => Array.from({ length: count }, (_, i) => String(first + i));

// A table of cells with one of several states each, 0 the empty one. One cell is in the tab order, the arrows move it.
class CellTable {
    // `headings` names the columns, `lines` the rows; either may be left out. `changed` hears of each finished change.
    constructor({ label, columns, rows, cells, states = ["off", "on"], headings, lines, changed }) {
        Object.assign(this, { columns, rows, cells, states, changed, current: 0, brush: null, places: [] });
        const properties = { className: "cells", role: "grid", ariaLabel: label };
        this.element = h("div", { ...properties, ariaColCount: columns, ariaRowCount: rows });
        this.element.style.gridTemplateColumns = `${lines ? "auto " : ""}repeat(${columns}, minmax(0, 1fr))`;
        this.element.style.setProperty("--columns", columns);
        if (headings) this.element.append(this.line("columnheader", lines ? ["Day", ...headings] : headings));
        for (let row = 0; row < rows; ++row) {
            const line = this.line("rowheader", lines ? [lines[row]] : []);
            line.append(...numbers(columns).map(column => this.cell(Number(column))));
            this.element.append(line);
        }
        this.places[0].tabIndex = 0;
        this.show(cells);
        this.element.addEventListener("keydown", event => this.key(event));
        this.element.addEventListener("pointerdown", event => this.press(event));
        this.element.addEventListener("pointermove", event => this.drag(event));
        for (const end of ["pointerup", "pointercancel"]) this.element.addEventListener(end, () => this.release());
    }

    line(role, texts) {
        return h("div", { role: "row" }, ...texts.map(text => h("span", { role }, text)));
    }

    cell(column) {
        const cell = h("span", { role: "gridcell", tabIndex: -1, ariaColIndex: column + 1 });
        cell.dataset.place = this.places.length;
        this.places.push(cell);
        return cell;
    }

    // Other cells than those that are drawn.
    show(cells) {
        cells.forEach((state, place) => {
            this.cells[place] = state;
            this.mark(place);
        });
    }

    mark(place) {
        const cell = this.places[place];
        const state = this.cells[place];
        cell.dataset.state = state;
        if (this.states.length === 2) {
            cell.ariaSelected = state === 1;
        } else {
            cell.textContent = state;
            cell.ariaLabel = `${state} ${this.states[state]}`;
        }
    }

    set(place, state) {
        if (this.cells[place] === state) return;
        this.cells[place] = state;
        this.mark(place);
    }

    next(place) {
        return (this.cells[place] + 1) % this.states.length;
    }

    fill(state) {
        this.places.forEach((_, place) => this.set(place, state(this.cells[place])));
        this.changed(this.cells);
    }

    focus(place) {
        this.places[this.current].tabIndex = -1;
        this.current = place;
        this.places[place].tabIndex = 0;
        this.places[place].focus();
    }

    key(event) {
        const last = this.columns - 1;
        const row = Math.floor(this.current / this.columns);
        const column = this.current % this.columns;
        const moves = {
            ArrowLeft: [row, Math.max(column - 1, 0)],
            ArrowRight: [row, Math.min(column + 1, last)],
            ArrowUp: [Math.max(row - 1, 0), column],
            ArrowDown: [Math.min(row + 1, this.rows - 1), column],
            Home: [event.ctrlKey ? 0 : row, 0],
            End: [event.ctrlKey ? this.rows - 1 : row, last],
            PageUp: [0, column],
            PageDown: [this.rows - 1, column],
        };
        if (event.key === " " || event.key === "Enter") {
            this.set(this.current, this.next(this.current));
            this.changed(this.cells);
        } else if (moves[event.key]) {
            const state = this.cells[this.current];
            const [toRow, toColumn] = moves[event.key];
            this.focus(toRow * this.columns + toColumn);
            if (event.shiftKey && event.key.startsWith("Arrow") && this.cells[this.current] !== state) {
                this.set(this.current, state);
                this.changed(this.cells);
            }
        } else {
            return;
        }
        event.preventDefault();
    }

    press(event) {
        const cell = event.target.closest("[role=gridcell]");
        if (!cell || event.button !== 0) return;
        event.preventDefault();
        this.element.setPointerCapture(event.pointerId);
        this.brush = this.next(Number(cell.dataset.place));
        this.focus(Number(cell.dataset.place));
        this.set(this.current, this.brush);
    }

    drag(event) {
        if (this.brush === null) return;
        const cell = document.elementFromPoint(event.clientX, event.clientY)?.closest("[role=gridcell]");
        if (cell && this.element.contains(cell)) this.set(Number(cell.dataset.place), this.brush);
    }

    release() {
        if (this.brush === null) return;
        this.brush = null;
        this.changed(this.cells);
    }
}

const week = { columns: 24, rows: 7, headings: numbers(24), lines: weekdays };

// What is drawn of a text: the table, the cells of an element, and the text with other cells in it.
const forms = {
    grid: {
        title: drawing => `${drawing.columns} × ${drawing.rows} cells`,
        table: drawing => ({ columns: drawing.columns, rows: drawing.rows }),
        cells: drawing => cellsFrom(drawing.text).slice(0, drawing.columns * drawing.rows),
        write: (source, { element }, cells) => withContent(source, element, textFrom(cells)),
    },
    week: {
        title: () => "hours of the week",
        table: () => week,
        cells: drawing => numbers(week_hours).map(hour => (drawing.text[hour] === "1" ? 1 : 0)),
        write: (source, { element }, cells) => withContent(source, element, cells.join("")),
    },
    blocks: {
        title: () => "hours of the week",
        table: () => week,
        cells: blockCells,
        write: (source, { element, row }, cells) => withElements(source, element, blockItems(row, cells)),
    },
    month: {
        title: () => "days of the month",
        table: ({ row }) => ({ columns: 31, rows: 1, headings: numbers(31, 1), states: dayWords(row) }),
        cells: monthCells,
        write: (source, { element, row }, cells) => withElements(source, element, dayItems(row, cells)),
    },
};

const dayWords = row => row.record.keys.find(each => each.key === "type").words.map(entry => entry.word);

// `fields` as an element with a child each.
const itemText = (name, fields) =>
    `<${name}>${Object.entries(fields)
        .map(([key, value]) => `<${key}>${value}</${key}>`)
        .join("")}</${name}>`;

const blockItems = (row, cells) =>
    runsOf(cells).map(([day, beginHour, endHour]) =>
        itemText(row.key, { enable: 1, weekDay: weekdays[day], beginHour, endHour }),
    );

const dayItems = (row, cells) =>
    [...cells.entries()]
        .filter(([, state]) => state > 0)
        .map(([index, state]) => itemText(row.key, { index, type: dayWords(row)[state] }));

// The children of a list's items, by their keys.
const fieldsOf = ({ row, element }) =>
    [...element.children].map(item =>
        Object.fromEntries(
            [...item.children].map(child => [
                readersOf(row.record, child.nodeName, row.record.keys)[0]?.key,
                textOf(child) ?? "",
            ]),
        ),
    );

// A block that is off clears its hours where the list is the week itself; beside an alarm type it does nothing.
function blockCells(drawing) {
    const cells = Array(week_hours).fill(0);
    const clears = !drawing.path.includes("/");
    for (const { enable, weekDay, beginHour, endHour } of fieldsOf(drawing)) {
        const day = weekdays.findIndex(name => fold(name).startsWith(fold(weekDay ?? "?")));
        if (day < 0 || (enable !== "1" && !clears)) continue;
        for (let hour = Number(beginHour); hour <= Math.min(Number(endHour), 23); ++hour)
            cells[day * 24 + hour] = enable === "1" ? 1 : 0;
    }
    return cells;
}

// [day, first hour, last hour] of each run.
function runsOf(cells) {
    const runs = [];
    cells.forEach((state, place) => {
        const day = Math.floor(place / 24);
        const hour = place % 24;
        const last = runs.at(-1);
        if (state === 1 && last?.[0] === day && last[2] === hour - 1) last[2] = hour;
        else if (state === 1) runs.push([day, hour, hour]);
    });
    return runs;
}

function monthCells(drawing) {
    const cells = Array(31).fill(0);
    const words = dayWords(drawing.row).map(fold);
    for (const { index, type } of fieldsOf(drawing))
        if (Number(index) in cells) cells[Number(index)] = Math.max(words.indexOf(fold(type ?? "")), 0);
    return cells;
}

// A drawing with its heading, and with buttons for what is tedious cell by cell.
class Figure {
    // `edit(write)` is given what makes the changed text out of the one there is.
    constructor(drawing, edit) {
        const form = forms[drawing.kind];
        this.drawing = drawing;
        this.edit = edit;
        this.table = new CellTable({
            label: `${drawing.path}: ${form.title(drawing)}`,
            ...form.table(drawing),
            cells: form.cells(drawing),
            changed: cells => this.changed(cells),
        });
        this.count = h("span", { className: "count" });
        this.masks = h("p", { className: "legend" });
        const caption = h("figcaption", {}, code(drawing.path), this.about(), this.count, this.tools());
        const scroll = h("div", { className: "scroll" }, this.table.element);
        this.element = h("figure", { className: drawing.kind }, caption, scroll, this.legend());
        this.tell();
    }

    // The first child beside it names an item of a list.
    about() {
        const { path, element } = this.drawing;
        const first = element.parentNode.firstElementChild;
        return path.includes("]/") && first !== element ? h("span", {}, textOf(first) ?? "") : "";
    }

    tools() {
        const tool = (text, state) => h("button", { type: "button", onclick: () => this.table.fill(state) }, text);
        const tools = [tool("None", () => 0)];
        if (this.table.states.length === 2)
            tools.push(
                tool("All", () => 1),
                tool("Invert", state => 1 - state),
            );
        return h("span", { className: "tools" }, ...tools);
    }

    legend() {
        const { states } = this.table;
        if (states.length === 2) return this.drawing.row.masks ? this.masks : "";
        const words = states.map((word, state) => `${state} ${word}`).slice(1);
        return h("p", { className: "legend" }, words.join(", "));
    }

    // The same drawing of a text that has changed.
    follow(drawing) {
        this.drawing = drawing;
        this.table.show(forms[drawing.kind].cells(drawing));
        this.tell();
    }

    changed(cells) {
        this.tell();
        this.edit(source => forms[this.drawing.kind].write(source, this.drawing, cells));
    }

    tell() {
        const set = this.table.cells.filter(state => state > 0).length;
        this.count.textContent = `${forms[this.drawing.kind].title(this.drawing)}, ${set} set`;
        const masks = weekdays.map((name, day) => `${name} 0x${maskOf(this.table.cells, day)}`);
        this.masks.textContent = `As day masks, hour h in bit h: ${masks.join(", ")}`;
    }
}

// The hours of a day as the bits of a number.
const maskOf = (cells, day) =>
    cells
        .slice(day * 24, day * 24 + 24)
        .reduce((mask, state, hour) => mask | (state << hour), 0)
        .toString(16)
        .padStart(6, "0");
