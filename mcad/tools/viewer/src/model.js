// The model as the page works with it: instances in a tree, meshes with the faces and edges that their pieces belong
// to, annotations and saved views.
import { fromLinear } from "./color.js";
import {
  cornersOf,
  cross,
  emptyBox,
  grow,
  identity,
  length,
  multiply,
  placementOf,
  subtract,
  transformPoint,
} from "./space.js";

/**
 * @typedef {object} Primitive triangles, lines or points of one colour
 * @property {"triangles"|"lines"|"points"} mode
 * @property {number} width indices in a piece: 3, 2 or 1
 * @property {Float32Array} positions
 * @property {?Float32Array} normals
 * @property {Uint16Array|Uint32Array} indices
 * @property {number[]} color sRGB and opacity
 * @property {string[]} ids of the faces or edges, in order
 * @property {Uint32Array} starts the first piece of each, and the end
 * @property {{low: number[], high: number[]}} box
 *
 * @typedef {object} Instance
 * @property {number} index
 * @property {?Instance} parent
 * @property {Instance[]} children
 * @property {string} name
 * @property {string} id
 * @property {number} block
 * @property {boolean} isHidden in the file
 * @property {object[]} properties
 * @property {?number} mesh
 * @property {number[]} world
 *
 * @typedef {object} Annotation
 * @property {number} index
 * @property {Instance} owner
 * @property {string} name
 * @property {string} id
 * @property {string} kind
 * @property {string} value printed content
 * @property {string[]} faces
 * @property {string[]} edges
 * @property {?number} mesh
 * @property {number[]} world
 * @property {boolean} isHidden
 */

const modes = { 0: ["points", 1], 1: ["lines", 2], 4: ["triangles", 3] };

/** The place in `starts` (ascending) whose range holds `piece`. */
export function rangeOf(starts, piece) {
  let low = 0;
  let high = starts.length - 2;
  while (low < high) {
    const middle = (low + high + 1) >> 1;
    if (starts[middle] <= piece) low = middle;
    else high = middle - 1;
  }
  return low;
}

function startsOf(counts, pieces) {
  const starts = new Uint32Array(counts.length + 1);
  counts.forEach((count, i) => (starts[i + 1] = starts[i] + count));
  if (starts[counts.length] > pieces) throw new Error("The faces of a mesh have more triangles than it.");
  return starts;
}

function readPrimitive(glb, { attributes, extras = {}, indices, material, mode: number = 4 }) {
  if (!modes[number]) throw new Error(`The model has primitives of an unknown kind, ${number}.`);
  const [mode, width] = modes[number];
  const positions = glb.accessor(attributes.POSITION);
  const count = positions.length / 3;
  const order = indices === undefined ? Uint32Array.from({ length: count }, (_, i) => i) : glb.accessor(indices);
  if (order.some((each) => each >= count)) throw new Error("An index of the model points outside its vertices.");
  const { min, max } = glb.json.accessors[attributes.POSITION];
  const factor = glb.json.materials?.[material]?.pbrMetallicRoughness?.baseColorFactor ?? [0.45, 0.48, 0.53, 1];
  const ids = extras.faces ?? extras.edges ?? [];
  const pieces = order.length / width;
  return {
    mode,
    width,
    positions,
    normals: mode === "triangles" && attributes.NORMAL !== undefined ? glb.accessor(attributes.NORMAL) : null,
    indices: order,
    color: [...fromLinear(factor), factor[3]],
    ids,
    starts: startsOf(extras.triangles ?? extras.segments ?? [], pieces),
    box: { low: min, high: max },
  };
}

/** All nodes that the scene reaches, parents first, with their parent and their place in the world. */
function walk({ nodes = [], scenes = [], scene = 0 }) {
  const parentOf = new Int32Array(nodes.length).fill(-2);
  const order = [...(scenes[scene]?.nodes ?? [])];
  if (order.length === 0 || !order.every((root) => nodes[root])) throw new Error("The model has no scene.");
  for (const root of order) parentOf[root] = -1;
  const worlds = [];
  for (let at = 0; at < order.length; ++at) {
    const index = order[at];
    const node = nodes[index];
    worlds[index] = multiply(parentOf[index] < 0 ? identity() : worlds[parentOf[index]], placementOf(node));
    for (const child of node.children ?? []) {
      if (!nodes[child]) throw new Error(`The model has no node ${child}, which another one contains.`);
      if (parentOf[child] !== -2) throw new Error(`Node ${child} of the model is contained twice.`);
      parentOf[child] = index;
      order.push(child);
    }
  }
  return { order, parentOf, worlds };
}

/**
 * @param {{json: object, accessor: Function}} glb as readGlb gives it
 * @returns {{instances: Instance[], meshes: Primitive[][], annotations: Annotation[], views: object[],
 *            blocks: Map<number, object>, toWorld: number[], triangles: number}}
 *   toWorld turns the coordinates of the file, in metres, into those of the page
 */
export function buildModel(glb) {
  const { json } = glb;
  const { order, parentOf, worlds } = walk(json);
  const instances = [];
  const annotations = [];
  const views = [];
  const owners = []; // by node: the instance that it is or that it belongs to
  for (const index of order) {
    const node = json.nodes[index];
    const extras = node.extras ?? {};
    const owner = owners[parentOf[index]] ?? null;
    const world = worlds[index];
    owners[index] = owner;
    if (extras.block !== undefined || !owner) {
      const instance = {
        index: instances.length,
        parent: owner,
        children: [],
        name: node.name ?? "",
        id: extras.id ?? "",
        block: extras.block ?? -1,
        isHidden: extras.hidden === true,
        properties: extras.properties ?? [],
        mesh: node.mesh ?? null,
        world,
      };
      owner?.children.push(instance);
      instances.push(instance);
      owners[index] = instance;
    } else if (node.camera !== undefined) {
      views.push({
        index: views.length,
        owner,
        name: node.name ?? "",
        id: extras.id ?? "",
        isActive: extras.active === true,
        camera: json.cameras[node.camera],
        world,
        clipping: extras.clipping ?? null,
        clippingWorld: worlds[parentOf[index]],
        annotations: new Set(extras.annotations ?? []),
      });
    } else if (extras.kind !== undefined) {
      annotations.push({
        index: annotations.length,
        owner,
        name: node.name ?? "",
        id: extras.id ?? "",
        kind: extras.kind,
        value: extras.value ?? (extras.texts ?? []).join("\n"),
        faces: extras.faces ?? [],
        edges: extras.edges ?? [],
        views: extras.views ?? [],
        isHidden: extras.hidden === true,
        mesh: node.mesh ?? null,
        world,
      });
    } else if (node.mesh !== undefined) {
      // the inner one of two nodes that place an instance
      owner.mesh = node.mesh;
      owner.world = world;
    }
  }
  const meshes = (json.meshes ?? []).map((mesh) => mesh.primitives.map((each) => readPrimitive(glb, each)));
  const count = (mesh) => meshes[mesh].reduce((sum, p) => sum + (p.width === 3 ? p.indices.length / 3 : 0), 0);
  const triangles = instances.reduce((sum, { mesh }) => sum + (mesh === null ? 0 : count(mesh)), 0);
  const blocks = new Map((json.extras?.blocks ?? []).map((block) => [block.id, block]));
  return { instances, meshes, annotations, views, blocks, toWorld: worlds[order[0]], triangles };
}

/** The box in the world around what is placed somewhere. */
export function boxOf(model, placed) {
  const box = emptyBox();
  for (const { mesh, world } of placed)
    for (const primitive of mesh === null ? [] : model.meshes[mesh])
      for (const corner of cornersOf(primitive.box)) grow(box, transformPoint(world, corner));
  return box;
}

/** Where a mesh has a face or an edge: null where the mesh has none of this id. */
export function findPieces(mesh, mode, id) {
  for (const primitive of mesh) {
    const at = primitive.mode === mode ? primitive.ids.indexOf(id) : -1;
    if (at >= 0) return { primitive, at };
  }
  return null;
}

/** An instance and all those in it, parents first. */
export function subtreeOf(instance) {
  const result = [instance];
  for (let i = 0; i < result.length; ++i) for (const child of result[i].children) result.push(child);
  return result;
}

/** What an instance is called. */
export const nameOf = (model, instance) =>
  instance.name || model.blocks.get(instance.block)?.name || instance.id || "unnamed";

/** The area of the triangles of a primitive, in its own coordinates. */
function areaOf({ positions, indices }) {
  const at = (i) => [0, 1, 2].map((k) => positions[3 * indices[i] + k]);
  let area = 0;
  for (let i = 0; i < indices.length; i += 3)
    area += length(cross(subtract(at(i + 1), at(i)), subtract(at(i + 2), at(i)))) / 2;
  return area;
}

/** The colour of most of the surface of a mesh; null if it has none. */
export function mainColor(mesh) {
  const surfaces = mesh.filter((each) => each.mode === "triangles");
  if (surfaces.length < 2) return surfaces[0]?.color ?? null;
  const areas = surfaces.map(areaOf);
  return surfaces[areas.indexOf(Math.max(...areas))].color;
}
