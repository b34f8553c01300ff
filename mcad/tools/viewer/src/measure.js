// Distances and angles between points, edges and faces: exact where it is known what these are.
import { pointsOf } from "./picking.js";
import { along, cross, distance, dot, length, subtract, transformDirection, transformNormal, transformPoint, unit } from "./space.js";

/**
 * @typedef {object} Shape what is measured from or to, in the world, in metres
 * @property {"point"|"line"|"plane"|"free"} kind lines and planes have no end
 * @property {string} name "vertex", "centre of circle", ...
 * @property {number[]} point on it; of what is free, the one that was picked
 * @property {number[]} [direction] of a line, or of the normal of a plane
 * @property {number[]} picked
 */

const isParallel = (a, b) => length(cross(a, b)) < 1e-6;
const angleBetween = (a, b) => (Math.atan2(length(cross(a, b)), dot(a, b)) * 180) / Math.PI;
const sharp = (angle) => Math.min(angle, 180 - angle);

/**
 * What was picked as something to measure, from what is known of it or else from how it is drawn.
 * @param {object} picked with kind, instance, id, primitive, at and point
 */
export function shapeOf(picked, facts) {
  const { instance, kind } = picked;
  const base = { point: picked.point, picked: picked.point };
  if (kind === "vertex") return { ...base, kind: "point", name: "vertex" };
  const fact = facts.of(instance.block, kind, picked.id);
  const { world } = instance;
  const center = fact.center && transformPoint(world, fact.center.map((each) => facts.toMeters(each)));
  const turned = (v) => unit(transformDirection(world, v));
  if (kind === "edge") {
    if (fact.direction) return { ...base, kind: "line", name: "line", direction: turned(fact.direction) };
    if (center) return { ...base, kind: "point", name: `centre of ${fact.kind}`, point: center };
    const points = picked.at < 0 ? [] : pointsOf(picked, world);
    if (points.length === 2) return { ...base, kind: "line", name: "line", direction: unit(subtract(points[1], points[0])) };
    return { ...base, kind: "free", name: fact.kind ?? "edge" };
  }
  if (fact.normal) return { ...base, kind: "plane", name: "plane", direction: transformNormal(world, fact.normal) };
  if (center && fact.axis)
    return { ...base, kind: "line", name: `axis of ${fact.kind}`, point: center, direction: turned(fact.axis) };
  if (center) return { ...base, kind: "point", name: `centre of ${fact.kind}`, point: center };
  const normal = flatNormal(picked);
  if (normal) return { ...base, kind: "plane", name: "plane", direction: transformNormal(world, normal) };
  return { ...base, kind: "free", name: fact.kind ?? "face" };
}

/** The normal that all vertices of a face share, if they do. */
function flatNormal({ primitive, at }) {
  if (at < 0 || !primitive.normals) return null;
  const normal = (i) => [0, 1, 2].map((k) => primitive.normals[3 * primitive.indices[i] + k]);
  const first = normal(3 * primitive.starts[at]);
  for (let i = 3 * primitive.starts[at]; i < 3 * primitive.starts[at + 1]; ++i) if (dot(first, normal(i)) < 1 - 1e-9) return null;
  return first;
}

const foot = (line, point) => along(line.point, line.direction, dot(subtract(point, line.point), line.direction));
const drop = (plane, point) => along(point, plane.direction, -dot(subtract(point, plane.point), plane.direction));

/** The two points where lines are nearest to each other; of parallel ones, beside where the first was picked. */
function nearestOfLines(a, b) {
  const across = cross(a.direction, b.direction);
  const square = dot(across, across);
  if (square < 1e-12) {
    const from = foot(a, a.picked);
    return [from, foot(b, from)];
  }
  const between = subtract(b.point, a.point);
  const s = dot(cross(between, b.direction), across) / square;
  const t = dot(cross(between, a.direction), across) / square;
  return [along(a.point, a.direction, s), along(b.point, b.direction, t)];
}

// By kinds in the order of the alphabet: the ends of the distance, null where there is none, and the angle.
const pairs = {
  "line line": (a, b) => ({ ends: nearestOfLines(a, b), angle: sharp(angleBetween(a.direction, b.direction)) }),
  "line plane": (a, b) => {
    const from = foot(a, a.picked);
    const angle = sharp(angleBetween(a.direction, b.direction));
    return { ends: angle > 90 - 1e-4 ? [from, drop(b, from)] : null, angle: 90 - angle };
  },
  "line point": (a, b) => ({ ends: [foot(a, b.point), b.point] }),
  "plane plane": (a, b) => ({
    ends: isParallel(a.direction, b.direction) ? [a.picked, drop(b, a.picked)] : null,
    angle: sharp(angleBetween(a.direction, b.direction)),
  }),
  "plane point": (a, b) => ({ ends: [drop(a, b.point), b.point] }),
  "point point": (a, b) => ({ ends: [a.point, b.point] }),
};

/**
 * The distance and the angle between two shapes.
 * @returns {{ends: number[][], isExact: boolean, distance: number, angle?: number, names: string[]}} distance in metres,
 *   between the places that were picked unless it is exact; angle in degrees, up to 90
 */
export function measure(first, second) {
  const [a, b] = first.kind <= second.kind ? [first, second] : [second, first];
  const found = pairs[`${a.kind} ${b.kind}`]?.(a, b) ?? {};
  const ends = found.ends ?? [a.picked, b.picked];
  if (a !== first) ends.reverse();
  return {
    ends,
    isExact: Boolean(found.ends),
    distance: distance(...ends),
    angle: found.angle,
    names: [first.name, second.name],
  };
}
