// What stands out on the model: picked faces and edges, those that an annotation applies to, what is measured.
import { Batch, materialOf } from "./batch.js";
import { findPieces } from "./model.js";
import { identity } from "./space.js";

const marks = { measure: [0.82, 0.13, 0.13, 1] };

/** The faces and edges that stand out, each with the instance that has them. */
export function highlightsOf({ picked, measured, model }) {
  const found = measured.filter((each) => each.kind !== "vertex").map((each) => ({ ...each }));
  if (picked?.kind === "face" || picked?.kind === "edge") found.push(picked);
  if (picked?.kind === "annotation") {
    const { owner, faces, edges } = picked.annotation;
    const mesh = owner.mesh === null ? [] : model.meshes[owner.mesh];
    for (const [mode, ids] of [["triangles", faces], ["lines", edges]])
      for (const id of ids) {
        const piece = findPieces(mesh, mode, id);
        if (piece) found.push({ instance: owner, ...piece });
      }
  }
  return found.filter(({ at }) => at >= 0);
}

const pieceOf = ({ positions, indices, mode, starts, width }, at) => ({
  mode,
  positions,
  indices: indices.subarray(width * starts[at], width * starts[at + 1]),
});

export class Overlay {
  #batches = [];
  accent = [0, 0.4, 0.9];

  constructor(stage, session) {
    this.stage = stage;
    this.session = session;
    session.on(["picked", "measured", "shown"], () => this.update());
  }

  update() {
    for (const batch of this.#batches) {
      this.stage.remove(batch.object);
      batch.dispose();
    }
    this.#batches = [];
    const { session, accent } = this;
    for (const { instance, primitive, at } of highlightsOf(session)) {
      if (!session.isShown(instance)) continue;
      const isFace = primitive.mode === "triangles";
      const look = isFace
        ? { kind: "plain", color: [...accent, 0.62], polygonOffsetFactor: 0, polygonOffsetUnits: -2, renderOrder: 6000 }
        : { kind: "line", color: [...accent, 1], renderOrder: 6001, isThick: true };
      this.#add(pieceOf(primitive, at), look, instance);
    }
    const points = session.measured.map(({ point }) => point);
    const ends = session.result?.ends ?? [];
    const everywhere = { world: identity() };
    const flat = (list) => ({ positions: Float32Array.from(list.flat()), indices: Uint32Array.from(list, (_, i) => i) });
    const onTop = { color: marks.measure, isOnTop: true, renderOrder: 6002 };
    if (ends.length > 0) this.#add({ mode: "lines", ...flat(ends) }, { kind: "line", ...onTop }, everywhere);
    const dots = ends.length > 0 ? ends : points;
    if (dots.length > 0) this.#add({ mode: "points", ...flat(dots) }, { kind: "point", ...onTop }, everywhere);
    this.stage.invalidate();
  }

  #add(primitive, { renderOrder, isThick = false, ...look }, placed) {
    const material = materialOf(this.stage.uniforms, look);
    const batch = new Batch(primitive, material, [placed]);
    batch.object.renderOrder = renderOrder;
    if (isThick) material.uniforms.lift = { value: 1e-4 };
    batch.update(() => true, () => isThick);
    this.#batches.push(batch);
    this.stage.add(batch.object);
  }
}
