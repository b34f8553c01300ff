// What has been measured.
import { button, make, table } from "./dom.js";
import { degrees } from "./facts.js";
import { dot, subtract, transformDirection, unit } from "./space.js";

const hints = ["Pick a vertex, an edge or a face.", "Pick another one, to measure between them."];

/** The rows that tell of what is measured. */
export function measuredRows({ measured, result, facts, model }) {
  if (measured.length === 0) return [];
  const exact = (meters) => facts.length(facts.fromMeters(meters));
  if (!result) {
    const [{ kind, instance, id, shape, point }] = measured;
    const along = (axis) => unit(transformDirection(model.toWorld, axis));
    const axes = [[1, 0, 0], [0, 1, 0], [0, 0, 1]].map(along);
    if (kind === "vertex") return axes.map((axis, k) => ["XYZ"[k], exact(dot(point, axis))]);
    const fact = facts.of(instance.block, kind, id);
    return [[kind === "edge" ? "Edge" : "Face", fact.kind ?? shape.name], ...facts.rows(fact)];
  }
  const [from, to] = result.ends;
  const rows = [["From", result.names[0]], ["To", result.names[1]]];
  rows.push([result.isExact ? "Distance" : "Between the picked points", exact(result.distance)]);
  if (result.angle !== undefined) rows.push(["Angle", degrees(result.angle)]);
  if (result.distance > 0)
    [[1, 0, 0], [0, 1, 0], [0, 0, 1]].forEach((axis, k) => {
      const part = dot(subtract(to, from), unit(transformDirection(model.toWorld, axis)));
      rows.push([`Δ${"xyz"[k]}`, exact(part)]);
    });
  return rows;
}

export class MeasureBar {
  constructor(session) {
    this.session = session;
    this.body = make("div", { "aria-live": "polite", id: "measured" });
    this.element = make("section.card.bar", { id: "measure-bar", "aria-label": "Measure", hidden: true },
      make("div.head", {}, make("h2", {}, "Measure"),
        make("div", {},
          button("clear", "Begin anew", () => session.forgetMeasured(), { isBare: true }),
          button("close", "End measuring", () => session.turnOn("measure", false), { isBare: true }))),
      this.body);
    session.on(["measured", "switches"], () => this.#update());
    this.#update();
  }

  #update() {
    const { session } = this;
    const { measured, switches } = session;
    this.element.hidden = !switches.measure;
    const hint = hints[measured.length];
    this.body.replaceChildren(...(measured.length > 0 ? [table(measuredRows(session))] : []), ...(hint ? [make("p.note", {}, hint)] : []));
  }
}
