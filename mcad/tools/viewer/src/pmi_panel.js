// Saved views and the list of annotations.
import { make } from "./dom.js";
import { List } from "./list.js";

/** What an annotation says in one line. */
export const lineOf = ({ value, name, kind }) => value.replaceAll("\n", "  ") || name || kind;

export class PmiPanel {
  /**
   * @param {import("./session.js").Session} session
   * @param {(view: ?object) => void} useView
   */
  constructor(session, useView) {
    this.session = session;
    const { annotations, views } = session.model;
    const viewButton = (view, label) => make("button.chip", { type: "button", "aria-pressed": "false", onclick: () => useView(view) }, label);
    this.buttons = [[null, viewButton(null, "All")], ...views.map((view) => [view, viewButton(view, view.name || "unnamed")])];
    this.list = new List({
      id: "annotations", role: "listbox", label: "Annotations", rowHeight: 44,
      render: (annotation) => this.#row(annotation),
      choose: (annotation) => session.pick({ kind: "annotation", annotation }),
    });
    this.element = make("div.panel", { hidden: true },
      views.length > 0 ? make("div.chips", { role: "group", "aria-label": "Saved views" }, ...this.buttons.map(([, each]) => each)) : null,
      annotations.length > 0 ? this.list.element : make("p.note", {}, "The model has no annotations."));
    session.on(["view", "shown", "switches"], () => this.#update());
    session.on(["picked"], () => this.#follow());
    this.#update();
  }

  /** Annotations that are hidden are listed only in views that show them. */
  #update() {
    const { session } = this;
    for (const [view, each] of this.buttons) each.setAttribute("aria-pressed", String(view === session.view));
    const isListed = (each) => (session.view ? session.view.owner === each.owner && session.view.annotations.has(each.id) : !each.isHidden);
    this.list.setRows(session.model.annotations.filter(isListed));
  }

  #follow() {
    const at = this.list.rows.indexOf(this.session.picked?.annotation);
    if (at >= 0) this.list.setActive(at);
    this.list.refresh();
  }

  #row(annotation) {
    const isShown = this.session.isAnnotationShown(annotation);
    return make(`div.row.two${isShown ? "" : ".none"}`, { role: "option", "aria-selected": String(annotation === this.session.picked?.annotation) },
      make("span.name", { title: annotation.value }, ...this.session.facts.symbols.nodes(lineOf(annotation))),
      make("span.kind", {}, [annotation.kind, annotation.name].filter(Boolean).join(" · ")));
  }
}
