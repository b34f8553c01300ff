// Closes what a section plane opens. Each mesh for itself: the stencil counts, in each pixel, how often the line of
// sight enters it less how often it leaves; where that is not zero on the plane, the plane lies inside. So caps are
// right where parts touch or go through each other.
import {
  AlwaysStencilFunc, BackSide, DecrementWrapStencilOp, FrontSide, GLSL3, IncrementWrapStencilOp, KeepStencilOp, Mesh,
  NotEqualStencilFunc, PlaneGeometry, ReplaceStencilOp, ShaderMaterial, Vector2, Vector3, Vector4,
} from "three";
import { Batch, materialOf } from "./batch.js";
import { mainColor } from "./model.js";
import { cutTriangles, cutsBox, isClosed, planeIn } from "./section.js";
import { along, dot, identity, transformPoint } from "./space.js";
import * as shaders from "./shaders.js";

const counting = (side, operation) => ({
  side,
  colorWrite: false,
  depthWrite: false,
  depthTest: false,
  transparent: false,
  stencilWrite: true,
  stencilFunc: AlwaysStencilFunc,
  stencilFail: operation,
  stencilZFail: operation,
  stencilZPass: operation,
});

const closing = {
  side: 2,
  polygonOffset: true,
  polygonOffsetFactor: 1,
  polygonOffsetUnits: 1,
  stencilWrite: true,
  stencilRef: 0,
  stencilFunc: NotEqualStencilFunc,
  stencilFail: KeepStencilOp,
  stencilZFail: ReplaceStencilOp,
  stencilZPass: ReplaceStencilOp,
};

export class Caps {
  #groups = [];
  #outline = null;
  #quad = new PlaneGeometry(1, 1);

  constructor(stage, session, placed) {
    this.stage = stage;
    this.session = session;
    let order = 1;
    for (const [mesh, list] of placed) {
      const primitives = session.model.meshes[mesh].filter((each) => each.mode === "triangles");
      if (primitives.length > 0) this.#groups.push({ mesh, primitives, placed: list, order: order++, batches: null });
    }
  }

  #make(group) {
    const { stage } = this;
    const passes = [[BackSide, IncrementWrapStencilOp], [FrontSide, DecrementWrapStencilOp]];
    group.batches = group.primitives.flatMap((primitive) => passes.map(([side, operation]) => {
      const material = materialOf(stage.uniforms, { kind: "plain", color: [0, 0, 0, 1], ...counting(side, operation) });
      const batch = new Batch(primitive, material, group.placed);
      batch.object.renderOrder = group.order;
      return batch;
    }));
    const angle = ((group.order % 2 ? 45 : -45) + 15 * Math.floor(((group.order % 6) - 1) / 2)) * (Math.PI / 180);
    const material = new ShaderMaterial({
      ...shaders.cap,
      ...closing,
      glslVersion: GLSL3,
      uniforms: {
        color: { value: new Vector4(...mainColor(group.primitives)) },
        hatch: { value: new Vector2(Math.cos(angle) / 9, Math.sin(angle) / 9) },
      },
    });
    group.cap = new Mesh(this.#quad, material);
    group.cap.renderOrder = group.order + 0.5;
    group.cap.frustumCulled = false;
    group.cap.onAfterRender = (renderer) => renderer.clearStencil();
    group.isClosed = isClosed(group.primitives);
    stage.add(...group.batches.map((each) => each.object), group.cap);
  }

  /** @param {?number[]} plane of the section in the world */
  update(plane, lineColor) {
    const { session, stage } = this;
    const points = [];
    for (const group of this.#groups) {
      const cut = new Set();
      if (plane)
        for (const each of group.placed) {
          const local = session.isShown(each) ? planeIn(plane, each.world) : null;
          if (local && group.primitives.some(({ box }) => cutsBox(local, box))) {
            cut.add(each);
            this.#collect(group, each, local, points);
          }
        }
      if (cut.size > 0 && !group.batches) this.#make(group);
      if (!group.batches) continue;
      const isCapped = session.switches.caps && group.isClosed;
      for (const batch of group.batches) batch.update((each) => isCapped && cut.has(each), () => false);
      group.cap.visible = isCapped && cut.size > 0;
      if (plane) this.#place(group.cap, plane);
    }
    this.#draw(points, lineColor);
    stage.invalidate();
  }

  #collect({ primitives }, { world }, local, points) {
    const found = [];
    for (const primitive of primitives) cutTriangles(primitive, local, found);
    for (let i = 0; i < found.length; i += 3) points.push(...transformPoint(world, found.slice(i, i + 3)));
  }

  #place(cap, [a, b, c, d]) {
    const { middle, radius } = this.session;
    const normal = [a, b, c];
    cap.position.set(...along(middle, normal, -(dot(normal, middle) + d)));
    cap.quaternion.setFromUnitVectors(new Vector3(0, 0, 1), new Vector3(a, b, c));
    cap.scale.setScalar(radius * 2.2);
  }

  /** The outline of what is cut. */
  #draw(points, color) {
    if (this.#outline) {
      this.stage.remove(this.#outline.object);
      this.#outline.dispose();
      this.#outline = null;
    }
    if (points.length === 0) return;
    const primitive = { mode: "lines", positions: Float32Array.from(points), indices: Uint32Array.from({ length: points.length / 3 }, (_, i) => i) };
    const material = materialOf(this.stage.uniforms, { kind: "line", color: [...color, 1] });
    material.uniforms.clip = this.stage.uniforms.uncut;
    material.uniforms.lift = { value: 6e-5 };
    this.#outline = new Batch(primitive, material, [{ world: identity() }]);
    this.#outline.object.renderOrder = 5000;
    this.#outline.update(() => true, () => false);
    this.stage.add(this.#outline.object);
  }
}
