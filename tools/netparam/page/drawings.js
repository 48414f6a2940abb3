// Grids, weeks and months as tables of cells that the mouse and the keyboard change.

const weekdays = ["Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"];
const numbers = (count, first = 0) => Array.from({ length: count }, (_, i) => String(first + i));

// A table of cells with one of several states each, 0 the empty one. One cell is in the tab order, the arrows move it.
class CellTable {
    // `headings` names the columns, `lines` the rows; either may be left out. `changed` hears of each finished change.
    constructor({ label, columns, rows, cells, states = ["off", "on"], headings, lines, changed }) {
        Object.assign(this, { columns, rows, cells, states, changed, current: 0, brush: null });
        const template = `${lines ? "auto " : ""}repeat(${columns}, minmax(0, 1fr))`;
        this.element = h("div", { className: "cells", role: "grid", ariaLabel: label, ariaColCount: columns, ariaRowCount: rows });
        this.element.style.gridTemplateColumns = template;
        this.element.style.setProperty("--columns", columns);
        if (headings)
            this.element.append(h("div", { role: "row" }, lines ? h("span", { role: "columnheader" }, "Day") : "",
                ...headings.map(text => h("span", { role: "columnheader" }, text))));
        this.places = [];
        for (let row = 0; row < rows; ++row)
            this.element.append(h("div", { role: "row" }, lines ? h("span", { role: "rowheader" }, lines[row]) : "",
                ...numbers(columns).map(column => this.cell(row, Number(column)))));
        this.places[0].tabIndex = 0;
        this.show(cells);
        this.element.addEventListener("keydown", event => this.key(event));
        this.element.addEventListener("pointerdown", event => this.press(event));
        this.element.addEventListener("pointermove", event => this.drag(event));
        for (const end of ["pointerup", "pointercancel"])
            this.element.addEventListener(end, () => this.release());
    }

    cell(row, column) {
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
        const cell = this.places[place], state = this.cells[place];
        cell.dataset.state = state;
        if (this.states.length === 2) {
            cell.ariaSelected = state === 1;
        } else {
            cell.textContent = state;
            cell.ariaLabel = `${state} ${this.states[state]}`;
        }
    }

    set(place, state) {
        if (this.cells[place] === state)
            return;
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
        this.places[place].focus({ preventScroll: false });
    }

    key(event) {
        const last = this.columns - 1, row = Math.floor(this.current / this.columns), column = this.current % this.columns;
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
            const state = this.cells[this.current], [toRow, toColumn] = moves[event.key];
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
        if (!cell || event.button !== 0)
            return;
        event.preventDefault();
        this.element.setPointerCapture(event.pointerId);
        this.brush = this.next(Number(cell.dataset.place));
        this.focus(Number(cell.dataset.place));
        this.set(this.current, this.brush);
    }

    drag(event) {
        const cell = this.brush === null ? null : document.elementFromPoint(event.clientX, event.clientY)?.closest("[role=gridcell]");
        if (cell && this.element.contains(cell))
            this.set(Number(cell.dataset.place), this.brush);
    }

    release() {
        if (this.brush === null)
            return;
        this.brush = null;
        this.changed(this.cells);
    }
}

// What is drawn of a text, and how the text says it: the cells of an element, and the text with other cells.
const forms = {
    grid: {
        title: drawing => `${drawing.columns} × ${drawing.rows} cells`,
        table: drawing => ({ columns: drawing.columns, rows: drawing.rows }),
        cells: drawing => cellsFrom(drawing.text).slice(0, drawing.columns * drawing.rows),
        write: (source, drawing, cells) => withContent(source, drawing.element, textFrom(cells)),
    },
    week: {
        title: () => "hours of the week",
        table: () => ({ columns: 24, rows: 7, headings: numbers(24), lines: weekdays }),
        cells: drawing => numbers(week_hours).map(hour => drawing.text[hour] === "1" ? 1 : 0),
        write: (source, drawing, cells) => withContent(source, drawing.element, cells.join("")),
    },
    blocks: {
        title: () => "hours of the week",
        table: () => ({ columns: 24, rows: 7, headings: numbers(24), lines: weekdays }),
        cells: blockCells,
        write: (source, drawing, cells) => withElements(source, drawing.element, runsOf(cells).map(([day, first, last]) =>
            `<${drawing.row.key}><enable>1</enable><weekDay>${weekdays[day]}</weekDay><beginHour>${first}</beginHour><endHour>${last}</endHour></${drawing.row.key}>`)),
    },
    month: {
        title: () => "days of the month",
        table: drawing => ({ columns: 31, rows: 1, headings: numbers(31, 1), states: dayWords(drawing) }),
        cells: monthCells,
        write: (source, drawing, cells) => withElements(source, drawing.element, [...cells.entries()].filter(([, state]) => state > 0)
            .map(([day, state]) => `<${drawing.row.key}><index>${day}</index><type>${dayWords(drawing)[state]}</type></${drawing.row.key}>`)),
    },
};

const dayWords = ({ row }) => row.record.keys.find(each => each.key === "type").words.map(entry => entry.word);

// The children of a list's items, by their keys.
const fieldsOf = ({ row, element }) => [...element.children].map(item =>
    Object.fromEntries([...item.children].map(child => [readersOf(row.record, child.nodeName, row.record.keys)[0]?.key, textOf(child) ?? ""])));

// A block that is off clears its hours where the list is the week itself; beside an alarm type it does nothing.
function blockCells(drawing) {
    const cells = Array(week_hours).fill(0), clears = !drawing.path.includes("/");
    for (const { enable, weekDay, beginHour, endHour } of fieldsOf(drawing)) {
        const day = weekdays.findIndex(name => fold(name).startsWith(fold(weekDay ?? "?")));
        for (let hour = Number(beginHour); (enable === "1" || clears) && day >= 0 && hour <= Number(endHour) && hour < 24; ++hour)
            cells[day * 24 + hour] = Number(enable);
    }
    return cells;
}

// [day, first hour, last hour] of each run.
function runsOf(cells) {
    const runs = [];
    cells.forEach((state, place) => {
        const day = Math.floor(place / 24), hour = place % 24, last = runs.at(-1);
        if (state === 1 && last?.[0] === day && last[2] === hour - 1)
            last[2] = hour;
        else if (state === 1)
            runs.push([day, hour, hour]);
    });
    return runs;
}

function monthCells(drawing) {
    const cells = Array(31).fill(0);
    for (const { index, type } of fieldsOf(drawing))
        if (Number(index) in cells)
            cells[Number(index)] = Math.max(dayWords(drawing).findIndex(word => fold(word) === fold(type ?? "")), 0);
    return cells;
}

// A drawing with its heading, and with buttons for what is tedious cell by cell.
class Figure {
    // `edit(text)` takes the text that the changed drawing stands for.
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
        const tool = (text, state) => h("button", { type: "button", onclick: () => this.table.fill(state) }, text);
        const tools = this.table.states.length === 2
            ? [tool("All", () => 1), tool("None", () => 0), tool("Invert", state => 1 - state)] : [tool("None", () => 0)];
        this.element = h("figure", { className: drawing.kind },
            h("figcaption", {}, h("code", {}, drawing.path), this.about(), this.count, h("span", { className: "tools" }, ...tools)),
            h("div", { className: "scroll" }, this.table.element), this.legend());
        this.tell();
    }

    // The first child beside it names an item of a list.
    about() {
        const { path, element } = this.drawing, first = element.parentNode.firstElementChild;
        return path.includes("]/") && first !== element ? h("span", { className: "about" }, textOf(first) ?? "") : "";
    }

    legend() {
        const { kind, row } = this.drawing, { states } = this.table;
        if (states.length > 2)
            return h("p", { className: "legend" }, states.map((word, state) => `${state} ${word}`).slice(1).join(", "));
        this.masks = kind === "week" && row.masks ? h("p", { className: "legend" }) : "";
        return this.masks;
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
        if (this.masks)
            this.masks.textContent = `As day masks, hour h in bit h: ${weekdays.map((day, i) => `${day} 0x${maskOf(this.table.cells, i)}`).join(", ")}`;
    }
}

// The hours of a day as the bits of a number.
const maskOf = (cells, day) => cells.slice(day * 24, day * 24 + 24).reduce((mask, state, hour) => mask | state << hour, 0).toString(16).padStart(6, "0");
