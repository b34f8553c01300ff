// One primitive of a mesh at all places where it is shown, as one draw call.
import {
  BufferAttribute, DoubleSide, InstancedBufferAttribute, InstancedBufferGeometry, GLSL3, InterleavedBuffer,
  InterleavedBufferAttribute, Mesh, Points, ShaderMaterial, Vector4,
} from "three";
import * as shaders from "./shaders.js";

/** Both ends of every segment at each of its four corners; the second two look the other way. */
function ribbons({ positions, indices }) {
  const segments = indices.length / 2;
  const data = new Float32Array(24 * segments);
  const order = new Uint32Array(6 * segments);
  for (let i = 0, at = 0; i < segments; ++i) {
    const [a, b] = [3 * indices[2 * i], 3 * indices[2 * i + 1]];
    for (let corner = 0; corner < 4; ++corner) {
      const [here, other] = corner < 2 ? [a, b] : [b, a];
      for (let k = 0; k < 3; ++k, ++at) {
        data[at] = positions[here + k];
        data[at + 3] = positions[other + k];
      }
      at += 3;
    }
    order.set([4 * i, 4 * i + 1, 4 * i + 2, 4 * i, 4 * i + 2, 4 * i + 3], 6 * i);
  }
  return { data: new InterleavedBuffer(data, 6), order };
}

/** Which of the shaders, and the geometry for it, that a primitive takes. */
export function geometryOf(primitive) {
  const geometry = new InstancedBufferGeometry();
  if (primitive.mode === "lines") {
    const { data, order } = ribbons(primitive);
    geometry.setAttribute("position", new InterleavedBufferAttribute(data, 3, 0));
    geometry.setAttribute("other", new InterleavedBufferAttribute(data, 3, 3));
    geometry.setIndex(new BufferAttribute(order, 1));
  } else {
    geometry.setAttribute("position", new BufferAttribute(primitive.positions, 3));
    if (primitive.normals) geometry.setAttribute("normal", new BufferAttribute(primitive.normals, 3));
    geometry.setIndex(new BufferAttribute(primitive.indices, 1));
  }
  return geometry;
}

/**
 * A material on one of the shaders.
 * @param {object} uniforms those of the stage
 * @param {{kind: string, color: number[], isOnTop?: boolean, extent?: number}} look where lines are to fade with the size
 * of what they belong to, that size is the extent
 */
export function materialOf(uniforms, { kind, color, isOnTop = false, extent = 0, ...more }) {
  const isThin = kind === "line" || kind === "point";
  return new ShaderMaterial({
    ...shaders[kind],
    glslVersion: GLSL3,
    uniforms: {
      color: { value: new Vector4(...color) },
      accent: uniforms.accent,
      clip: isOnTop ? uniforms.uncut : uniforms.clip,
      viewport: uniforms.viewport,
      width: isOnTop ? uniforms.strokeWidth : uniforms.edgeWidth,
      extent: { value: extent },
      lift: { value: isThin && !isOnTop ? 2e-5 : 0 },
    },
    side: DoubleSide,
    transparent: isOnTop || color[3] < 1,
    depthTest: !isOnTop,
    depthWrite: !isOnTop && color[3] === 1,
    polygonOffset: !isThin && !isOnTop,
    polygonOffsetFactor: 1,
    polygonOffsetUnits: 1,
    ...more,
  });
}

export class Batch {
  /**
   * @param {object} primitive of the model
   * @param {import("three").ShaderMaterial} material
   * @param {object[]} placed what has the mesh: instances or annotations, each with `world`
   */
  constructor(primitive, material, placed) {
    this.primitive = primitive;
    this.placed = placed;
    const geometry = geometryOf(primitive);
    this.places = new InstancedBufferAttribute(new Float32Array(16 * placed.length), 16);
    this.marks = new InstancedBufferAttribute(new Float32Array(placed.length), 1);
    geometry.setAttribute("place", this.places);
    geometry.setAttribute("mark", this.marks);
    this.object = primitive.mode === "points" ? new Points(geometry, material) : new Mesh(geometry, material);
    this.object.frustumCulled = false;
  }

  dispose() {
    this.object.geometry.dispose();
    this.object.material.dispose();
  }

  get material() { return this.object.material; }

  /** Shows it at those places only that pass, and marks some of them. */
  update(isShown, isMarked) {
    let count = 0;
    for (const each of this.placed) {
      if (!isShown(each)) continue;
      this.places.array.set(each.world, 16 * count);
      this.marks.array[count++] = isMarked(each) ? 1 : 0;
    }
    this.object.geometry.instanceCount = count;
    this.object.visible = count > 0;
    this.places.needsUpdate = true;
    this.marks.needsUpdate = true;
  }
}
