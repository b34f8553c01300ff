// Keeps the stage as the session has it: which instances and annotations are drawn, in which colours, what stands out.
import { Batch, materialOf } from "./batch.js";
import { legible, luminance } from "./color.js";
import { planeOf } from "./section.js";
import { uncut } from "./stage.js";

/** Of each mesh, what has it. */
function placedByMesh(list) {
  const result = new Map();
  for (const each of list) {
    if (each.mesh === null) continue;
    if (!result.has(each.mesh)) result.set(each.mesh, []);
    result.get(each.mesh).push(each);
  }
  return result;
}

const kinds = { triangles: "surface", lines: "line", points: "point" };

/** The colour of most of the surface of a mesh; null if it has none. */
export function mainColor(mesh) {
  const surfaces = mesh.filter((each) => each.mode === "triangles");
  if (surfaces.length === 0) return null;
  return surfaces.reduce((most, each) => (each.indices.length > most.indices.length ? each : most)).color;
}

export class Drawing {
  #parts = [];
  #annotations = [];

  /**
   * @param {import("./stage.js").Stage} stage
   * @param {import("./session.js").Session} session
   */
  constructor(stage, session) {
    this.stage = stage;
    this.session = session;
    const { meshes, instances, annotations } = session.model;
    const make = (batches, isOnTop) => (placed, mesh) => {
      for (const primitive of meshes[mesh]) {
        const kind = isOnTop && primitive.mode === "triangles" ? "plain" : kinds[primitive.mode];
        const batch = new Batch(primitive, materialOf(stage.uniforms, { kind, color: primitive.color, isOnTop }), placed);
        batch.object.renderOrder = isOnTop ? 10 : 0;
        batch.surface = mainColor(meshes[mesh]);
        batches.push(batch);
        stage.add(batch.object);
      }
    };
    placedByMesh(instances).forEach(make(this.#parts, false));
    placedByMesh(annotations).forEach(make(this.#annotations, true));
    session.on(["shown", "picked", "view", "switches"], () => this.update());
    session.on(["section"], () => this.updateSection());
    session.on(["camera"], () => {
      stage.camera = session.camera;
      stage.invalidate();
    });
    Object.assign(stage, { middle: session.middle, radius: session.radius, camera: session.camera });
    this.update();
    this.updateSection();
  }

  /** Colours that can be told from the ground: those of annotations, and of lines on surfaces or in the open. */
  setTheme({ ground, accent }) {
    this.stage.uniforms.accent.value.set(...accent);
    const recolor = (batch, behind, least) => {
      const [r, g, b] = legible(batch.primitive.color.slice(0, 3), behind, least);
      batch.material.uniforms.color.value.set(r, g, b, batch.primitive.color[3]);
    };
    for (const batch of this.#annotations) recolor(batch, ground, 4.5);
    for (const batch of this.#parts)
      if (batch.primitive.mode !== "triangles")
        recolor(batch, batch.surface?.slice(0, 3) ?? ground, luminance(batch.surface ?? ground) < 0.03 ? 1.6 : 1.3);
    this.stage.invalidate();
  }

  update() {
    const { session } = this;
    const { picked, switches } = session;
    const marked = new Set();
    if (picked?.kind === "instance")
      for (let list = [picked.instance]; list.length; ) {
        const each = list.pop();
        marked.add(each);
        list.push(...each.children);
      }
    for (const batch of this.#parts) {
      const isEdge = batch.primitive.mode === "lines" && batch.surface;
      batch.update((each) => session.isShown(each) && (!isEdge || switches.edges), (each) => marked.has(each));
    }
    for (const batch of this.#annotations)
      batch.update((each) => session.isAnnotationShown(each), (each) => picked?.annotation === each);
    this.stage.invalidate();
  }

  updateSection() {
    const { section, partsBox } = this.session;
    this.plane = section ? planeOf(section, partsBox) : null;
    this.stage.uniforms.clip.value.set(...(this.plane ?? uncut));
    this.stage.invalidate();
  }
}
