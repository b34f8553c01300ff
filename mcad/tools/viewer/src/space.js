// Vectors as arrays of three numbers, and transformations as 16 numbers column by column, as in glTF.

export const add = (a, b) => [a[0] + b[0], a[1] + b[1], a[2] + b[2]];
export const subtract = (a, b) => [a[0] - b[0], a[1] - b[1], a[2] - b[2]];
export const scale = (a, s) => [a[0] * s, a[1] * s, a[2] * s];
/** a + s b */
export const along = (a, b, s) => [a[0] + b[0] * s, a[1] + b[1] * s, a[2] + b[2] * s];
export const dot = (a, b) => a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
export const cross = (a, b) => [a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]];
export const length = (a) => Math.hypot(a[0], a[1], a[2]);
export const distance = (a, b) => Math.hypot(a[0] - b[0], a[1] - b[1], a[2] - b[2]);
export const mix = (a, b, t) => along(scale(a, 1 - t), b, t);

/** The direction of a vector; of one without length, `otherwise`. */
export function unit(a, otherwise = [0, 0, 1]) {
  const size = length(a);
  return size > 0 && Number.isFinite(size) ? scale(a, 1 / size) : otherwise;
}

/** Some unit vector at right angles to a unit vector. */
export const across = (a) => unit(cross(a, Math.abs(a[1]) < 0.9 ? [0, 1, 0] : [1, 0, 0]));

export const identity = () => [1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1];

/** The transformation that does b first, then a. */
export function multiply(a, b) {
  const result = new Array(16);
  for (let column = 0; column < 16; column += 4)
    for (let row = 0; row < 4; ++row)
      result[column + row] =
        a[row] * b[column] + a[row + 4] * b[column + 1] + a[row + 8] * b[column + 2] + a[row + 12] * b[column + 3];
  return result;
}

export const transformPoint = (m, p) => [
  m[0] * p[0] + m[4] * p[1] + m[8] * p[2] + m[12],
  m[1] * p[0] + m[5] * p[1] + m[9] * p[2] + m[13],
  m[2] * p[0] + m[6] * p[1] + m[10] * p[2] + m[14],
];

export const transformDirection = (m, p) => [
  m[0] * p[0] + m[4] * p[1] + m[8] * p[2],
  m[1] * p[0] + m[5] * p[1] + m[9] * p[2],
  m[2] * p[0] + m[6] * p[1] + m[10] * p[2],
];

const columns = (m) => [m.slice(0, 3), m.slice(4, 7), m.slice(8, 11)];

/** Where a normal points after an affine transformation: by the cofactors, so also after unequal scaling. */
export function transformNormal(m, n) {
  const [x, y, z] = columns(m);
  const sign = Math.sign(dot(x, cross(y, z))) || 1;
  const moved = along(along(scale(cross(y, z), n[0]), cross(z, x), n[1]), cross(x, y), n[2]);
  return unit(scale(moved, sign));
}

/** The inverse of an affine transformation, null if it flattens. */
export function invert(m) {
  const [x, y, z] = columns(m);
  const determinant = dot(x, cross(y, z));
  if (!(Math.abs(determinant) > 0) || !Number.isFinite(determinant)) return null;
  const rows = [cross(y, z), cross(z, x), cross(x, y)].map((each) => scale(each, 1 / determinant));
  const origin = [m[12], m[13], m[14]];
  return [0, 1, 2].flatMap((k) => [rows[0][k], rows[1][k], rows[2][k], 0])
    .concat(rows.map((row) => -dot(row, origin)), 1);
}

/** The transformation of a node of glTF. */
export function placementOf({ matrix, rotation, translation = [0, 0, 0], scale: size = [1, 1, 1] }) {
  if (matrix) return matrix.slice();
  const [x, y, z, w] = rotation ?? [0, 0, 0, 1];
  return [
    ...scale([1 - 2 * (y * y + z * z), 2 * (x * y + z * w), 2 * (x * z - y * w)], size[0]), 0,
    ...scale([2 * (x * y - z * w), 1 - 2 * (x * x + z * z), 2 * (y * z + x * w)], size[1]), 0,
    ...scale([2 * (x * z + y * w), 2 * (y * z - x * w), 1 - 2 * (x * x + y * y)], size[2]), 0,
    ...translation, 1,
  ];
}

/** A box that holds nothing yet. */
export const emptyBox = () => ({ low: [Infinity, Infinity, Infinity], high: [-Infinity, -Infinity, -Infinity] });
export const isEmptyBox = (box) => !(box.low[0] <= box.high[0]);

/** Makes the box hold a point, too. */
export function grow(box, point) {
  for (let k = 0; k < 3; ++k) {
    box.low[k] = Math.min(box.low[k], point[k]);
    box.high[k] = Math.max(box.high[k], point[k]);
  }
}

/** The eight corners of a box; none of one that is empty. */
export function cornersOf({ low, high }) {
  if (!(low[0] <= high[0])) return [];
  return [0, 1, 2, 3, 4, 5, 6, 7].map((i) => [0, 1, 2].map((k) => (((i >> k) & 1) === 1 ? high : low)[k]));
}
