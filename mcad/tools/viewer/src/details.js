// The card that tells of what is picked.
import { button, make, table } from "./dom.js";
import { findPieces, nameOf } from "./model.js";
import { lineOf } from "./pmi_panel.js";
import { propertyGroups } from "./report_panel.js";

/** The annotations that apply to a face or an edge of an instance. */
export const annotationsOn = (model, instance, what, id) =>
  model.annotations.filter((each) => each.owner === instance && (what === "face" ? each.faces : each.edges).includes(id));

const pathOf = (model, instance) => {
  const names = [];
  for (let each = instance.parent; each?.parent; each = each.parent) names.unshift(nameOf(model, each));
  return names.join(" / ");
};

/** One line that says what is picked, to be read out. */
export function sentenceOf({ model, facts }, picked) {
  if (!picked) return "Nothing is picked";
  if (picked.kind === "annotation") return `Annotation ${lineOf(picked.annotation)}, ${picked.annotation.kind}`;
  const part = nameOf(model, picked.instance);
  if (picked.kind === "instance") return `Part ${part}`;
  const fact = facts.of(picked.instance.block, picked.kind, picked.id);
  const radius = Number.isFinite(fact.radius) ? `, radius ${facts.length(fact.radius)}` : "";
  return `${picked.kind === "face" ? "Face" : "Edge"} ${picked.id}, ${fact.kind ?? "unknown"}${radius}, of ${part}`;
}

export class Details {
  /**
   * @param {import("./session.js").Session} session
   * @param {{fit: Function, useView: Function}} act
   */
  constructor(session, act) {
    this.session = session;
    this.act = act;
    this.element = make("section.card", { id: "details", "aria-label": "What is picked", hidden: true });
    session.on(["picked", "shown"], () => this.#update());
  }

  #update() {
    const { picked } = this.session;
    this.element.hidden = !picked;
    if (!picked) return;
    const close = button("close", "Close", () => this.session.pick(null), { isBare: true });
    this.element.replaceChildren(...(picked.kind === "annotation" ? this.#annotation(picked, close) : this.#part(picked, close)));
  }

  #head(kind, title, close) {
    return make("div.head", {}, make("div", {}, make("p.kind", {}, kind), make("h2", {}, title)), close);
  }

  #part(picked, close) {
    const { session, session: { model, facts } } = this;
    const { instance } = picked;
    const block = model.blocks.get(instance.block);
    const name = nameOf(model, instance);
    const isPiece = picked.kind !== "instance";
    const isHidden = session.shownOf(instance) === "none";
    const nodes = [];
    if (isPiece) {
      const fact = facts.of(instance.block, picked.kind, picked.id);
      nodes.push(this.#head(`${picked.kind} ${picked.id}`, fact.kind ?? "kind not known", close));
      nodes.push(table(facts.rows(fact)), ...this.#pmiOf(picked));
    }
    nodes.push(isPiece ? make("h2.part", {}, name) : this.#head("part", name, close));
    const triangles = instance.mesh === null ? 0 : model.meshes[instance.mesh].reduce((sum, p) => sum + (p.width === 3 ? p.indices.length / 3 : 0), 0);
    const faces = instance.mesh === null ? 0 : model.meshes[instance.mesh].reduce((sum, p) => sum + (p.width === 3 ? p.ids.length : 0), 0);
    nodes.push(make("div.actions", {},
      button(isHidden ? "shown" : "hidden", isHidden ? "Show" : "Hide", () => session.show(instance, isHidden)),
      button("isolate", "Isolate", () => session.isolate(instance)),
      button("fit", "Zoom", () => this.act.fit([instance]), { title: "Zoom to this part" })));
    nodes.push(table([
      ["Part", block?.name ?? ""], ["In", pathOf(model, instance)], ["Id", instance.id],
      ["Faces", faces ? String(faces) : ""], ["Triangles", triangles ? triangles.toLocaleString("en") : ""],
    ].filter(([label, text]) => text && (label !== "Part" || text !== name))));
    nodes.push(...propertyGroups(instance.properties), ...propertyGroups(block?.properties));
    return nodes;
  }

  /** Buttons for the annotations of a face or an edge. */
  #pmiOf({ instance, kind, id }) {
    const found = annotationsOn(this.session.model, instance, kind, id);
    if (found.length === 0) return [];
    const buttons = found.map((annotation) =>
      make("button.link", { type: "button", onclick: () => this.session.pick({ kind: "annotation", annotation }) },
        ...this.session.facts.symbols.nodes(lineOf(annotation))));
    return [make("section.group", {}, make("h3", {}, "Annotations"), make("div.links", {}, ...buttons))];
  }

  #annotation({ annotation }, close) {
    const { session, session: { model, facts } } = this;
    const { owner } = annotation;
    const link = (label, act) => make("button.link", { type: "button", onclick: act }, label);
    const pieces = (what, ids) => ids.map((id) => {
      const piece = owner.mesh === null ? null : findPieces(model.meshes[owner.mesh], what === "face" ? "triangles" : "lines", id);
      const { kind = "" } = facts.of(owner.block, what, id);
      const label = `${what} ${id}${kind && `, ${kind}`}`;
      return piece ? link(label, () => session.pick({ kind: what, instance: owner, id, primitive: piece.primitive, at: piece.at })) : make("span", {}, label);
    });
    const views = model.views.filter((view) => view.owner === owner && view.annotations.has(annotation.id));
    const group = (title, items) => items.length > 0 ? make("section.group", {}, make("h3", {}, title), make("div.links", {}, ...items)) : null;
    return [
      this.#head(annotation.kind, annotation.name || annotation.id, close),
      annotation.value ? make("p.value", {}, ...facts.symbols.nodes(annotation.value)) : null,
      group("Applies to", [...pieces("face", annotation.faces), ...pieces("edge", annotation.edges)]),
      group("Shown in", views.map((view) => link(view.name, () => this.act.useView(view)))),
      table([["Part", nameOf(model, owner)], ["Id", annotation.id]].filter(([, text]) => text)),
    ].filter(Boolean);
  }
}
