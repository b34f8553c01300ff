// The camera as plain numbers: what it looks at, from where, and how much of it the window shows.
import { along, cornersOf, cross, dot, length, mix, scale, subtract, transformDirection, transformPoint, unit } from "./space.js";

/**
 * @typedef {object} Camera
 * @property {number[]} target in the middle of the window
 * @property {number[]} back unit vector from the target to the eye
 * @property {number[]} up unit vector, at right angles to back
 * @property {number} height of the window at the target; on an upright screen, its width
 * @property {boolean} isPerspective
 * @property {number} angle of a perspective, in degrees
 */

export const standardViews = ["iso", "front", "back", "left", "right", "top", "bottom"];

// From the eye and upwards, with z up, as zeq picture has them.
const sights = {
  iso: [[-1, 1.2, -0.9], [0, 0, 1]],
  front: [[0, 1, 0], [0, 0, 1]],
  back: [[0, -1, 0], [0, 0, 1]],
  left: [[1, 0, 0], [0, 0, 1]],
  right: [[-1, 0, 0], [0, 0, 1]],
  top: [[0, 0, -1], [0, 1, 0]],
  bottom: [[0, 0, 1], [0, -1, 0]],
};

const margin = 1.08;
const usualAngle = 30;
const yUp = ([x, y, z]) => [x, z, -y];

function looking(camera, back, up) {
  const z = unit(back);
  const right = unit(cross(up, z), [1, 0, 0]);
  return { ...camera, back: z, up: cross(z, right) };
}

export const rightOf = (camera) => cross(camera.up, camera.back);

/** The height and the width of the window at the target. */
export const windowOf = (camera, aspect) =>
  aspect >= 1
    ? { height: camera.height, width: camera.height * aspect }
    : { height: camera.height / aspect, width: camera.height };

/** How far the eye is from the target; of a parallel projection, far enough for everything within `radius`. */
export function eyeDistance(camera, aspect, radius) {
  if (!camera.isPerspective) return 4 * radius;
  return windowOf(camera, aspect).height / 2 / Math.tan((camera.angle * Math.PI) / 360);
}

/** Turns towards a standard view of a model whose world has y up. */
export function standardView(camera, name) {
  const [direction, up] = sights[name].map(yUp);
  return looking(camera, scale(direction, -1), up);
}

/**
 * Moves and zooms so that the points, at least one, fill the window.
 * @param {number} foot the part of the window's height that stays free below them; above them if it is negative
 */
export function fitted(camera, points, aspect, foot = 0) {
  const axes = [rightOf(camera), camera.up, camera.back];
  const low = [Infinity, Infinity, Infinity];
  const high = low.map((each) => -each);
  for (const point of points)
    axes.forEach((axis, k) => {
      low[k] = Math.min(low[k], dot(axis, point));
      high[k] = Math.max(high[k], dot(axis, point));
    });
  const size = subtract(high, low);
  const most = Math.max(...size, 1e-9);
  const [width, height] = [Math.max(size[0], most * 1e-3), Math.max(size[1], most * 1e-3)];
  const middle = axes.reduce((sum, axis, k) => along(sum, axis, (low[k] + high[k]) / 2), [0, 0, 0]);
  const nearer = camera.isPerspective ? size[2] * Math.tan((camera.angle * Math.PI) / 360) : 0; // what is nearest is largest
  const full = Math.max((height * margin + nearer) / (1 - Math.abs(foot)), (width * margin) / aspect + nearer);
  const fit = { ...camera, target: middle, height: aspect >= 1 ? full : full * aspect };
  return { ...fit, target: along(middle, camera.up, (-foot / 2) * full) };
}

/** Turns by a drag of so many windows' heights: around the upright axis of the world, and around the window's own. */
export function turned(camera, dx, dy) {
  const speed = Math.PI * 1.2;
  const yaw = -dx * speed * (camera.up[1] < -1e-6 ? -1 : 1);
  const around = (v, axis, angle) => {
    const c = Math.cos(angle);
    return along(along(scale(v, c), cross(axis, v), Math.sin(angle)), axis, dot(axis, v) * (1 - c));
  };
  const right = rightOf(camera);
  const turn = (v) => around(around(v, right, -dy * speed), [0, 1, 0], yaw);
  return looking(camera, turn(camera.back), turn(camera.up));
}

/** Moves what is seen by so many windows' heights to the right and down. */
export function panned(camera, dx, dy, aspect) {
  const { height } = windowOf(camera, aspect);
  return { ...camera, target: along(along(camera.target, rightOf(camera), -dx * height), camera.up, dy * height) };
}

/** Shows less for a factor below 1, more for one above; what is at (x, y), from -1 to 1, stays there. */
export function zoomed(camera, factor, x, y, aspect) {
  const { height, width } = windowOf(camera, aspect);
  const t = 1 - factor;
  const target = along(along(camera.target, rightOf(camera), (x * width * t) / 2), camera.up, (y * height * t) / 2);
  return { ...camera, target, height: camera.height * factor };
}

/** The same view in the other projection. */
export const withPerspective = (camera, isPerspective) => ({ ...camera, isPerspective, angle: usualAngle });

/** The camera of a saved view; `radius` and `middle` are those of the model. */
export function savedCamera(view, middle, radius) {
  const { camera, world } = view;
  const eye = transformPoint(world, [0, 0, 0]);
  const depth = (back) => Math.max(dot(subtract(eye, middle), back), radius * 1e-3);
  const axes = [[0, 0, 1], [0, 1, 0]].map((axis) => transformDirection(world, axis));
  const plain = looking({ target: eye, isPerspective: camera.type === "perspective", angle: usualAngle }, ...axes);
  const distance = depth(plain.back);
  const target = along(eye, plain.back, -distance);
  if (!plain.isPerspective)
    return { ...plain, target, height: 2 * camera.orthographic.ymag * length(axes[1]) };
  const angle = (camera.perspective.yfov * 180) / Math.PI;
  return { ...plain, target, angle, height: 2 * distance * Math.tan(camera.perspective.yfov / 2) };
}

/** The ray under (x, y), from -1 to 1: direction is a unit vector. */
export function rayThrough(camera, x, y, aspect, radius) {
  const { height, width } = windowOf(camera, aspect);
  const at = along(along(camera.target, rightOf(camera), (x * width) / 2), camera.up, (y * height) / 2);
  const distance = eyeDistance(camera, aspect, radius);
  if (!camera.isPerspective) return { origin: along(at, camera.back, distance), direction: scale(camera.back, -1) };
  const origin = along(camera.target, camera.back, distance);
  return { origin, direction: unit(subtract(at, origin)) };
}

/** Where a point is on the window, from -1 to 1, and how far behind the window's plane; null behind the eye. */
export function project(camera, point, aspect, radius) {
  const { height, width } = windowOf(camera, aspect);
  const from = subtract(point, camera.target);
  const nearness = dot(from, camera.back);
  const distance = eyeDistance(camera, aspect, radius);
  const grow = camera.isPerspective ? distance / (distance - nearness) : 1;
  if (!(grow > 0)) return null;
  return [(2 * grow * dot(from, rightOf(camera))) / width, (2 * grow * dot(from, camera.up)) / height, -nearness];
}

const toQuaternion = ({ up, back }) => {
  const x = cross(up, back);
  const [y, z] = [up, back];
  // The largest component first (Shepperd 1978).
  const sums = [x[0] + y[1] + z[2], x[0] - y[1] - z[2], y[1] - x[0] - z[2], z[2] - x[0] - y[1]];
  const k = sums.indexOf(Math.max(...sums));
  const s = Math.sqrt(sums[k] + 1) * 2;
  const [a, b, c] = [y[2] - z[1], z[0] - x[2], x[1] - y[0]];
  const [d, e, f] = [y[0] + x[1], z[0] + x[2], z[1] + y[2]];
  return [[a, b, c, s * s / 4], [s * s / 4, d, e, a], [d, s * s / 4, f, b], [e, f, s * s / 4, c]][k].map((n) => n / s);
};

/** A camera on the way from one to another; t is from 0 to 1. */
export function between(from, to, t) {
  const [p, q] = [toQuaternion(from), toQuaternion(to)];
  const cosine = p.reduce((sum, each, k) => sum + each * q[k], 0);
  const angle = Math.acos(Math.min(1, Math.abs(cosine)));
  const [a, b] = angle < 1e-4 ? [1 - t, t] : [Math.sin((1 - t) * angle), Math.sin(t * angle)].map((n) => n / Math.sin(angle));
  const raw = p.map((each, k) => each * a + q[k] * b * (cosine < 0 ? -1 : 1));
  const size = Math.hypot(...raw);
  const [x, y, z, w] = raw.map((n) => n / size);
  return {
    ...to,
    up: [2 * (x * y - z * w), 1 - 2 * (x * x + z * z), 2 * (y * z + x * w)],
    back: [2 * (x * z + y * w), 2 * (y * z - x * w), 1 - 2 * (x * x + y * y)],
    target: mix(from.target, to.target, t),
    height: from.height * (to.height / from.height) ** t,
    angle: from.angle + (to.angle - from.angle) * t,
  };
}

/** Where a camera begins: towards the standard view iso. */
export const firstCamera = () =>
  standardView({ target: [0, 0, 0], height: 1, isPerspective: false, angle: usualAngle }, "iso");
