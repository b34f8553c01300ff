// The tree of parts with its search.
import { icon, make } from "./dom.js";
import { List } from "./list.js";
import { nameOf } from "./model.js";
import { Tree } from "./tree.js";

const indent = 14;

export class PartsPanel {
  /** @param {import("./session.js").Session} session */
  constructor(session) {
    this.session = session;
    this.tree = new Tree(session.model);
    this.search = make("input", {
      id: "search", type: "search", placeholder: "Search parts", "aria-label": "Search parts", autocomplete: "off",
      oninput: () => this.#find(),
    });
    this.found = make("p.note", { role: "status" });
    this.list = new List({
      id: "tree", role: "tree", label: "Parts", rowHeight: 26,
      render: (row) => this.#row(row),
      choose: ({ instance }) => session.pick({ kind: "instance", instance }),
      key: (event, row, at) => this.#key(event, row, at),
    });
    this.element = make("div.panel", {}, make("div.search", {}, this.search, this.found), this.list.element);
    session.on(["shown"], () => this.list.refresh());
    session.on(["picked"], () => this.#follow());
    this.#update();
  }

  #update() { this.list.setRows(this.tree.rows()); }

  #find() {
    const count = this.tree.search(this.search.value);
    this.found.textContent = this.search.value.trim() ? `${count} found` : "";
    this.#update();
  }

  get #chosen() { return this.session.picked?.instance ?? this.session.picked?.annotation?.owner ?? null; }

  /** Brings the row of what was picked into sight. */
  #follow() {
    const chosen = this.#chosen;
    if (chosen) {
      this.tree.reveal(chosen);
      this.#update();
      const at = this.list.rows.findIndex((row) => row.instance === chosen);
      if (at >= 0) this.list.setActive(at);
    }
    this.list.refresh();
  }

  #row({ instance, level, position, size }) {
    const { session, tree } = this;
    const name = nameOf(session.model, instance);
    const state = session.shownOf(instance);
    const isParent = instance.children.length > 0;
    const isOpen = isParent && tree.isOpen(instance);
    const act = (change) => (event) => {
      event.stopPropagation();
      change();
    };
    return make(`div.row.${state}`, {
      role: "treeitem", "aria-level": level, "aria-posinset": position, "aria-setsize": size,
      "aria-expanded": isParent ? String(isOpen) : null, "aria-selected": String(instance === this.#chosen),
      "aria-label": state === "none" ? `${name}, hidden` : name,
    },
    make("span.twisty", {
      style: `margin-left:${(level - 1) * indent}px`, "aria-hidden": "true",
      onclick: act(() => {
        tree.toggle(instance);
        this.#update();
      }),
    }, isParent ? icon("open") : ""),
    make("span.name", { title: name }, name),
    make("button.bare", {
      type: "button", tabindex: -1, title: state === "none" ? "Show" : "Hide",
      "aria-label": `${state === "none" ? "Show" : "Hide"} ${name}`,
      onclick: act(() => session.show(instance, state === "none")),
    }, icon(state === "none" ? "hidden" : "shown")));
  }

  #key({ key }, { instance }, at) {
    if (key === "h") this.session.show(instance, this.session.shownOf(instance) === "none");
    else if (key === "i") this.session.isolate(instance);
    else if (key === "ArrowRight" || key === "ArrowLeft") {
      const goal = this.tree.key(key, this.list.rows, at);
      this.#update();
      if (goal !== null) this.list.setActive(goal);
    } else return false;
    return true;
  }
}
