// A list of any length, of which only the rows in sight are elements. The list has the focus; aria-activedescendant says
// which row is meant.
import { make } from "./dom.js";

const spare = 6; // rows beyond those in sight

export class List {
  #rows = [];
  #first = 0;
  #shown = [];
  active = 0;

  /**
   * @param {object} settings
   * @param {string} settings.id
   * @param {"tree"|"listbox"} settings.role
   * @param {string} settings.label
   * @param {number} settings.rowHeight in pixels
   * @param {(row: object, index: number) => HTMLElement} settings.render makes the element of a row
   * @param {(row: object, index: number) => void} settings.choose a row was clicked, or chosen by Enter
   * @param {(event: KeyboardEvent, row: object, index: number) => boolean} [settings.key] whether it has dealt with a key
   */
  constructor(settings) {
    this.settings = settings;
    this.inner = make("div.rows", { role: "none" });
    this.element = make("div.list", {
      id: settings.id, role: settings.role, "aria-label": settings.label, tabindex: 0,
      onkeydown: (event) => this.#key(event),
      onscroll: () => this.#draw(),
      onclick: (event) => this.#click(event),
    }, this.inner);
    new ResizeObserver(() => this.#draw(true)).observe(this.element);
  }

  get rows() { return this.#rows; }

  /** Shows other rows, or the same ones anew. */
  setRows(rows) {
    this.#rows = rows;
    this.active = Math.max(0, Math.min(this.active, rows.length - 1));
    this.inner.style.height = `${rows.length * this.settings.rowHeight}px`;
    this.#draw(true);
  }

  refresh() { this.#draw(true); }

  /** Says which row is meant, and brings it into sight. */
  setActive(index) {
    if (!this.#rows[index]) return;
    this.active = index;
    const { element, settings: { rowHeight } } = this;
    const top = index * rowHeight;
    if (top < element.scrollTop) element.scrollTop = top;
    else if (top + rowHeight > element.scrollTop + element.clientHeight) element.scrollTop = top + rowHeight - element.clientHeight;
    this.#draw(true);
  }

  #draw(isAnew = false) {
    const { element, settings } = this;
    const first = Math.max(0, Math.floor(element.scrollTop / settings.rowHeight) - spare);
    if (!isAnew && first === this.#first) return;
    this.#first = first;
    const count = Math.ceil((element.clientHeight || 600) / settings.rowHeight) + 2 * spare;
    this.#shown = this.#rows.slice(first, first + count).map((row, k) => {
      const index = first + k;
      const rendered = settings.render(row, index);
      rendered.id = `${settings.id}-${index}`;
      rendered.dataset.row = index;
      rendered.style.cssText = `top:${index * settings.rowHeight}px;height:${settings.rowHeight}px`;
      rendered.classList.toggle("active", index === this.active);
      return rendered;
    });
    this.inner.replaceChildren(...this.#shown);
    const isSeen = this.active >= first && this.active < first + this.#shown.length;
    if (isSeen) element.setAttribute("aria-activedescendant", `${settings.id}-${this.active}`);
    else element.removeAttribute("aria-activedescendant");
  }

  #click(event) {
    const index = Number(event.target.closest("[data-row]")?.dataset.row ?? NaN);
    if (!this.#rows[index]) return;
    this.setActive(index);
    this.settings.choose(this.#rows[index], index);
  }

  #key(event) {
    const row = this.#rows[this.active];
    if (!row || event.altKey || event.ctrlKey || event.metaKey) return;
    const page = Math.max(1, Math.floor(this.element.clientHeight / this.settings.rowHeight) - 1);
    const last = this.#rows.length - 1;
    const goal = { ArrowDown: this.active + 1, ArrowUp: this.active - 1, Home: 0, End: last, PageDown: this.active + page, PageUp: this.active - page }[event.key];
    if (goal !== undefined) this.setActive(Math.max(0, Math.min(last, goal)));
    else if (event.key === "Enter" || event.key === " ") this.settings.choose(row, this.active);
    else if (!this.settings.key?.(event, row, this.active)) return;
    event.preventDefault();
    event.stopPropagation();
  }
}
