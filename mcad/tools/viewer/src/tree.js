// The rows of the tree: which instances are listed, at which level, and where a key leads.
import { nameOf } from "./model.js";

/** The instances at the top: those in the product, which itself says nothing that the page does not. */
export function topOf({ instances }) {
  const roots = instances.filter((each) => !each.parent);
  return roots.length === 1 && roots[0].mesh === null && roots[0].children.length > 0 ? roots[0].children : roots;
}

export class Tree {
  #open = new Set();
  #found = null;

  constructor(model) {
    this.model = model;
    this.top = topOf(model);
    for (const each of this.top) if (this.top.length === 1) this.#open.add(each);
  }

  isOpen(instance) { return this.#found ? true : this.#open.has(instance); }

  toggle(instance, isOpen = !this.#open.has(instance)) {
    if (isOpen) this.#open.add(instance);
    else this.#open.delete(instance);
  }

  /** Opens what is around an instance. */
  reveal(instance) {
    for (let each = instance.parent; each; each = each.parent) this.#open.add(each);
  }

  /** Lists only instances with this in their name, and what is around them; all for an empty text. Returns how many. */
  search(text) {
    const wanted = text.trim().toLowerCase();
    if (!wanted) {
      this.#found = null;
      return this.model.instances.length;
    }
    this.#found = new Set();
    let count = 0;
    for (const instance of this.model.instances) {
      const texts = [nameOf(this.model, instance), this.model.blocks.get(instance.block)?.name ?? ""];
      if (!texts.some((each) => each.toLowerCase().includes(wanted))) continue;
      ++count;
      for (let each = instance; each && !this.#found.has(each); each = each.parent) this.#found.add(each);
    }
    return count;
  }

  /** @returns {{instance: object, level: number, position: number, size: number}[]} from the top to the bottom */
  rows() {
    const rows = [];
    const isListed = (each) => !this.#found || this.#found.has(each);
    const stack = [];
    const push = (list, level) => {
      const listed = list.filter(isListed);
      for (let i = listed.length - 1; i >= 0; --i)
        stack.push({ instance: listed[i], level, position: i + 1, size: listed.length });
    };
    push(this.top, 1);
    while (stack.length > 0) {
      const row = stack.pop();
      rows.push(row);
      if (row.instance.children.length > 0 && this.isOpen(row.instance)) push(row.instance.children, row.level + 1);
    }
    return rows;
  }

  /**
   * What a key does in a row of the tree, as WAI-ARIA has it: opens, closes, or goes to the row that is returned.
   * @returns {?number}
   */
  key(name, rows, at) {
    const { instance, level } = rows[at];
    const isParent = instance.children.length > 0;
    if (name === "ArrowRight") {
      if (!isParent) return null;
      if (this.isOpen(instance)) return at + 1;
      this.toggle(instance, true);
    } else if (name === "ArrowLeft") {
      if (isParent && this.#open.has(instance) && !this.#found) this.toggle(instance, false);
      else for (let i = at; i >= 0; --i) if (rows[i].level < level) return i;
    }
    return null;
  }
}
