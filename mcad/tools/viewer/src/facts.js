// What is known exactly of faces and edges, and how lengths and symbols are written.
import { Symbols } from "./symbols.js";

const lengths = new Set(["radius", "length", "major", "minor"]);
const digits = (value, most) => {
  const text = (Object.is(value, -0) ? 0 : value).toFixed(most);
  return text.includes(".") ? text.replace(/\.?0+$/, "").replace(/^-0$/, "0") : text;
};

export class Facts {
  #blocks = new Map();

  /** @param {object} json the document of facts; what it does not hold is not known */
  constructor(json = {}) {
    this.file = json.file ?? "";
    this.generator = json.generator ?? "";
    this.unit = json.unit ?? "mm";
    this.millimeters = json.millimeters > 0 ? json.millimeters : 1;
    this.symbols = new Symbols(json.symbols);
    this.losses = json.losses ?? [];
    this.warnings = json.warnings ?? [];
    const byId = (list) => new Map((list ?? []).map((each) => [String(each.id), each]));
    for (const block of json.blocks ?? [])
      this.#blocks.set(block.id, { face: byId(block.faces), edge: byId(block.edges) });
  }

  /** What is known of a face or edge (`what`) of a block; an object with its id alone if nothing is. */
  of(block, what, id) {
    return this.#blocks.get(block)?.[what].get(id) ?? { id };
  }

  /** Metres in the unit in which lengths are shown. */
  fromMeters(meters) { return (meters * 1000) / this.millimeters; }
  toMeters(value) { return (value * this.millimeters) / 1000; }

  /** A length in the unit, written with it. */
  length(value) { return `${digits(value, this.millimeters > 10 ? 5 : 4)}\u00a0${this.unit}`; }
  area(value) { return `${digits(value, 3)}\u00a0${this.unit}²`; }

  /** The rows [label, text] that tell of a face or an edge, its kind left out. */
  rows(fact) {
    const rows = [];
    if (Number.isFinite(fact.radius)) {
      rows.push(["Radius", this.length(fact.radius)], ["Diameter", this.length(2 * fact.radius)]);
    }
    for (const [key, label] of [["major", "Major radius"], ["minor", "Minor radius"], ["length", "Length"]])
      if (lengths.has(key) && Number.isFinite(fact[key])) rows.push([label, this.length(fact[key])]);
    if (Number.isFinite(fact.angle)) rows.push(["Half angle", degrees(fact.angle)]);
    if (Number.isFinite(fact.area)) rows.push(["Area", this.area(fact.area)]);
    for (const [key, label] of [["normal", "Normal"], ["axis", "Axis"]])
      if (fact[key]) rows.push([label, directionText(fact[key])]);
    return rows;
  }
}

/** An angle, written with its sign. */
export const degrees = (value) => `${digits(value, 3)}°`;

/** A unit vector: an axis is named, anything else is written in numbers. */
export function directionText(v) {
  const axis = v.findIndex((each) => Math.abs(Math.abs(each) - 1) < 1e-9);
  if (axis >= 0) return (v[axis] < 0 ? "−" : "+") + "xyz"[axis];
  return v.map((each) => digits(each, 4)).join(", ");
}
