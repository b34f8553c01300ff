// What lies under a ray: the nearest triangle, and the nearest line within reach.
import { rangeOf } from "./model.js";
import { along, cross, distance, dot, invert, length, subtract, transformDirection, transformPoint } from "./space.js";

const inverses = new WeakMap();

/** The ray in the coordinates of something placed; its direction is not of length one there, so that t stays. */
function localRay(placed, { origin, direction }) {
  if (!inverses.has(placed)) inverses.set(placed, invert(placed.world));
  const inverse = inverses.get(placed);
  return inverse && { origin: transformPoint(inverse, origin), direction: transformDirection(inverse, direction) };
}

function meetsBox({ origin, direction }, { low, high }, reach) {
  let [first, last] = [-Infinity, Infinity];
  for (let k = 0; k < 3; ++k) {
    const [a, b] = [low[k] - reach, high[k] + reach].map((side) => (side - origin[k]) / direction[k]);
    if (direction[k] === 0) {
      if (origin[k] < low[k] - reach || origin[k] > high[k] + reach) return false;
      continue;
    }
    first = Math.max(first, Math.min(a, b));
    last = Math.min(last, Math.max(a, b));
  }
  return first <= last && last >= 0;
}

const corner = (positions, i) => [positions[3 * i], positions[3 * i + 1], positions[3 * i + 2]];

/** Where a ray goes through a triangle from either side (Möller and Trumbore 1997); NaN where it does not. */
export function throughTriangle({ origin, direction }, a, b, c) {
  const [u, v] = [subtract(b, a), subtract(c, a)];
  const p = cross(direction, v);
  const determinant = dot(u, p);
  const from = subtract(origin, a);
  const s = dot(from, p) / determinant;
  if (!(s >= 0 && s <= 1)) return NaN;
  const q = cross(from, u);
  const r = dot(direction, q) / determinant;
  return r >= 0 && s + r <= 1 ? dot(v, q) / determinant : NaN;
}

const idAt = (primitive, piece) =>
  primitive.ids.length > 0 ? { at: rangeOf(primitive.starts, piece), id: primitive.ids[rangeOf(primitive.starts, piece)] } : { at: -1, id: "" };

/**
 * The nearest triangle that a ray meets.
 * @param {object[]} placed instances or annotations
 * @param {(point: number[]) => boolean} isKept says which points count, as those that are not cut away
 * @returns {?{placed: object, primitive: object, at: number, id: string, t: number, point: number[]}}
 */
export function nearestTriangle(model, placed, ray, isKept = () => true) {
  let best = null;
  for (const each of placed) {
    for (const primitive of each.mesh === null ? [] : model.meshes[each.mesh]) {
      const local = primitive.mode === "triangles" ? localRay(each, ray) : null;
      if (!local || !meetsBox(local, primitive.box, 0)) continue;
      const { positions, indices } = primitive;
      for (let i = 0; i < indices.length; i += 3) {
        const [a, b, c] = [0, 1, 2].map((k) => corner(positions, indices[i + k]));
        const t = throughTriangle(local, a, b, c);
        if (!(t > 0) || (best && t >= best.t)) continue;
        const point = along(ray.origin, ray.direction, t);
        if (isKept(point)) best = { placed: each, primitive, piece: i / 3, t, point };
      }
    }
  }
  return best && { ...best, ...idAt(best.primitive, best.piece) };
}

/** Where a ray and a segment are nearest to each other: t along the ray, and the point of the segment. */
export function nearestOnSegment({ origin, direction }, a, b) {
  const [u, from] = [subtract(b, a), subtract(a, origin)];
  const [dd, du, uu] = [dot(direction, direction), dot(direction, u), dot(u, u)];
  const determinant = dd * uu - du * du;
  const s = determinant > 1e-12 * dd * uu ? (du * dot(from, direction) - dd * dot(from, u)) / determinant : 0;
  const point = along(a, u, Math.min(1, Math.max(0, s)));
  const t = dot(subtract(point, origin), direction) / dd;
  return { t, point, apart: distance(point, along(origin, direction, t)) };
}

/**
 * The line that comes nearest to a ray.
 * @param {(t: number) => number} reach how far from the ray a line may be where the ray has come t far
 * @param {(point: number[], t: number) => boolean} isKept
 * @returns {?{placed: object, primitive: object, at: number, id: string, t: number, point: number[], ends: number[][]}}
 *   ends are those of the whole edge
 */
export function nearestLine(model, placed, ray, reach, isKept = () => true) {
  let best = null;
  for (const each of placed) {
    for (const primitive of each.mesh === null ? [] : model.meshes[each.mesh]) {
      const local = primitive.mode === "lines" ? localRay(each, ray) : null;
      const size = local && length(each.world.slice(0, 3));
      const middle = local && transformPoint(each.world, primitive.box.low);
      const far = local && reach(Math.abs(dot(subtract(middle, ray.origin), ray.direction))) * 4;
      if (!local || !meetsBox(local, primitive.box, far / size)) continue;
      const { positions, indices } = primitive;
      for (let i = 0; i < indices.length; i += 2) {
        const { t, point, apart } = nearestOnSegment(local, corner(positions, indices[i]), corner(positions, indices[i + 1]));
        const off = (apart * size) / reach(t);
        if (!(off <= 1) || (best && off >= best.off) || t < 0) continue;
        const inWorld = transformPoint(each.world, point);
        if (isKept(inWorld, t)) best = { placed: each, primitive, piece: i / 2, t, off, point: inWorld };
      }
    }
  }
  if (!best) return null;
  const found = { ...best, ...idAt(best.primitive, best.piece) };
  return { ...found, ends: found.at < 0 ? [] : endsOf(found.primitive, found.at, found.placed.world) };
}

/** The first and the last point of an edge, in the world; none of a closed one but its seam. */
function endsOf({ positions, indices, starts }, at, world) {
  const ends = [2 * starts[at], 2 * starts[at + 1] - 1].map((i) => corner(positions, indices[i]));
  return ends.map((each) => transformPoint(world, each));
}

/** The points of a piece of a mesh, in the world. */
export function pointsOf({ primitive, at }, world) {
  const { positions, indices, starts, width } = primitive;
  const result = [];
  for (let i = width * starts[at]; i < width * starts[at + 1]; ++i) result.push(transformPoint(world, corner(positions, indices[i])));
  return result;
}

