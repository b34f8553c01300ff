// The section plane: which plane it is, and where it cuts the triangles.
import {
  along, cornersOf, cross, dot, length, scale, subtract, transformDirection, transformNormal, transformPoint, unit,
} from "./space.js";

/**
 * @typedef {object} Section
 * @property {0|1|2|"view"} axis of the file that it stands across; "view" is the clipping of a saved view
 * @property {number[]} normal in the world, towards what is cut away
 * @property {?number} offset normal · point on the plane in metres; null is the middle of the model
 */

/** The axis of the file in the world. */
export const axisInWorld = (toWorld, axis) => unit(transformDirection(toWorld, [0, 1, 2].map((k) => (k === axis ? 1 : 0))));

/** A section across an axis, which takes away what is on the eye's side. */
export function sectionAcross(axis, camera, toWorld) {
  const normal = axisInWorld(toWorld, axis);
  return { axis, normal: dot(normal, camera.back) < 0 ? scale(normal, -1) : normal, offset: null };
}

/** Across that axis of the file that is nearest to the line of sight. */
export function startSection(camera, toWorld) {
  const nearness = [0, 1, 2].map((axis) => Math.abs(dot(axisInWorld(toWorld, axis), camera.back)));
  return sectionAcross(nearness.indexOf(Math.max(...nearness)), camera, toWorld);
}

/** The section that a saved view makes. */
export function sectionOfView({ clipping: [a, b, c, d], clippingWorld }) {
  const normal = transformNormal(clippingWorld, [a, b, c]);
  const square = a * a + b * b + c * c;
  const on = scale([a, b, c], -d / square);
  const point = transformPoint(clippingWorld, on);
  return { axis: "view", normal, offset: dot(normal, point) };
}

/** From where to where the offset of a section across a box goes. */
export function reachOf(normal, box) {
  const reaches = cornersOf(box).map((corner) => dot(normal, corner));
  return [Math.min(...reaches), Math.max(...reaches)];
}

/** (a, b, c, d) in the world: what has a x + b y + c z + d > 0 is cut away. */
export function planeOf(section, box) {
  const [low, high] = reachOf(section.normal, box);
  return [...section.normal, -(section.offset ?? (low + high) / 2)];
}

/** The same plane in the coordinates of something placed in the world. */
export function planeIn(plane, world) {
  const at = (k) => dot(plane, world.slice(k, k + 3));
  return [at(0), at(4), at(8), at(12) + plane[3]];
}

/**
 * Where a plane cuts the triangles of a primitive, in its own coordinates: both ends of each segment, flat.
 * @param {number[]} plane in those coordinates
 * @param {number[]} out grows
 */
export function cutTriangles({ positions, indices }, [a, b, c, d], out) {
  const height = (i) => a * positions[3 * i] + b * positions[3 * i + 1] + c * positions[3 * i + 2] + d;
  for (let at = 0; at < indices.length; at += 3) {
    const heights = [height(indices[at]), height(indices[at + 1]), height(indices[at + 2])];
    const above = (heights[0] > 0) + (heights[1] > 0) + (heights[2] > 0);
    if (above === 0 || above === 3) continue;
    for (let k = 0; k < 3; ++k) {
      const [h, g] = [heights[k], heights[(k + 1) % 3]];
      if (h > 0 === g > 0) continue;
      const [i, j] = [3 * indices[at + k], 3 * indices[at + ((k + 1) % 3)]];
      const t = h / (h - g);
      for (let n = 0; n < 3; ++n) out.push(positions[i + n] + t * (positions[j + n] - positions[i + n]));
    }
  }
}

/** Whether a plane, in the coordinates of a box, goes through it. */
export function cutsBox([a, b, c, d], box) {
  const heights = cornersOf(box).map((p) => a * p[0] + b * p[1] + c * p[2] + d);
  return heights.some((h) => h > 0) && heights.some((h) => h <= 0);
}

/** Whether triangles close a volume: the vectors of their areas then add up to nothing. */
export function isClosed(mesh) {
  let sum = [0, 0, 0];
  let all = 0;
  for (const { mode, positions, indices } of mesh) {
    if (mode !== "triangles") continue;
    const at = (i) => [positions[3 * indices[i]], positions[3 * indices[i] + 1], positions[3 * indices[i] + 2]];
    for (let i = 0; i < indices.length; i += 3) {
      const area = cross(subtract(at(i + 1), at(i)), subtract(at(i + 2), at(i)));
      sum = along(sum, area, 1);
      all += length(area);
    }
  }
  return all > 0 && length(sum) < 1e-3 * all;
}
