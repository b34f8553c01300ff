// Makes binary glTF as zeq writes it: cubes of 10 mm with a face and an annotation, placed as often as wanted.
import { gzipSync } from "node:zlib";

const corners = [0, 1, 2, 3, 4, 5, 6, 7].map((i) => [i & 1, (i >> 1) & 1, i >> 2].map((each) => each * 0.01));
// Faces 1 to 6 are at low x, high x, low y, high y, low z, high z; their corners counter-clockwise from outside.
const faces = [[0, 4, 6, 2], [1, 3, 7, 5], [0, 1, 5, 4], [2, 6, 7, 3], [0, 2, 3, 1], [4, 5, 7, 6]];
const edges = [[0, 1], [2, 3], [4, 5], [6, 7], [0, 2], [1, 3], [4, 6], [5, 7], [0, 4], [1, 5], [2, 6], [3, 7]];

/** A file of a description and the bytes of its buffer. */
export function toGlb(json, body = Buffer.alloc(0)) {
  const text = Buffer.from(JSON.stringify(json));
  const padded = Buffer.concat([text, Buffer.alloc((4 - (text.length % 4)) % 4, 0x20)]);
  const chunk = (type, bytes) => Buffer.concat([Buffer.from(new Uint32Array([bytes.length, type]).buffer), bytes]);
  const chunks = [chunk(0x4e4f534a, padded), ...(body.length > 0 ? [chunk(0x004e4942, body)] : [])];
  const size = 12 + chunks.reduce((sum, each) => sum + each.length, 0);
  return Buffer.concat([Buffer.from(new Uint32Array([0x46546c67, 2, size]).buffer), ...chunks]);
}

/**
 * The description of cubes at places in metres, and its buffer.
 * @param {number[][]} places
 * @param {(json: object) => void} change does what it likes with the description
 */
export function cubes(places, change = () => {}) {
  const positions = new Float32Array(faces.flatMap((face) => face.flatMap((i) => corners[i])));
  const normals = new Float32Array(faces.flatMap((_, k) => Array(4).fill([0, 1, 2].map((axis) => (axis === k >> 1 ? (k & 1) * 2 - 1 : 0))).flat()));
  const triangles = new Uint16Array(faces.flatMap((_, k) => [0, 1, 2, 0, 2, 3].map((i) => 4 * k + i)));
  const lines = new Float32Array(edges.flatMap((edge) => edge.flatMap((i) => corners[i])));
  const order = new Uint16Array(24).map((_, i) => i);
  const parts = [positions, normals, triangles, lines, order].map((each) => Buffer.from(each.buffer));
  let offset = 0;
  const bufferViews = parts.map(({ length }) => ({ buffer: 0, byteOffset: (offset += length) - length, byteLength: length }));
  const box = { min: [0, 0, 0], max: corners[7].map(Math.fround) };
  const float = { componentType: 5126, type: "VEC3" };
  const index = { componentType: 5123, type: "SCALAR" };
  const json = {
    asset: { version: "2.0" },
    scene: 0,
    scenes: [{ nodes: [0] }],
    nodes: [
      { name: "product", rotation: [-Math.SQRT1_2, 0, 0, Math.SQRT1_2], children: places.map((_, i) => i + 1), extras: { block: 0 } },
      ...places.map((at, i) => ({ name: `Cube ${i + 1}`, mesh: 0, matrix: [1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, ...at, 1], extras: { block: 1, id: `#${i}` } })),
    ],
    meshes: [{
      name: "Cube",
      primitives: [
        { attributes: { POSITION: 0, NORMAL: 1 }, indices: 2, material: 0, extras: { faces: ["1", "2", "3", "4", "5", "6"], triangles: [2, 2, 2, 2, 2, 2] } },
        { attributes: { POSITION: 3 }, indices: 4, material: 1, mode: 1, extras: { edges: edges.map((_, i) => `e${i}`), segments: edges.map(() => 1) } },
      ],
    }],
    materials: [{ pbrMetallicRoughness: { baseColorFactor: [0.2, 0.4, 0.6, 1] } }, { pbrMetallicRoughness: { baseColorFactor: [0, 0, 0, 1] } }],
    accessors: [{ ...float, count: 24, ...box }, { ...float, count: 24 }, { ...index, count: 36 }, { ...float, count: 24, ...box }, { ...index, count: 24 }]
      .map((each, i) => ({ bufferView: i, ...each })),
    bufferViews,
    buffers: [{ byteLength: offset }],
    extras: { blocks: [{ id: 0, name: "product" }, { id: 1, name: "Cube block" }] },
  };
  change(json);
  return toGlb(json, Buffer.concat(parts));
}

/** An ArrayBuffer of its own, as the page has it. */
export const bufferOf = (bytes) => bytes.buffer.slice(bytes.byteOffset, bytes.byteOffset + bytes.byteLength);

/** The data elements of a page. */
export function elements(glb, facts) {
  const element = (id, bytes) => `<script type="text/plain" id="${id}">${gzipSync(bytes).toString("base64")}</script>`;
  return element("model", glb) + element("facts", Buffer.from(JSON.stringify(facts)));
}
