// Keeps the stage as the session has it: which instances and annotations are drawn, in which colours, what stands out.
import { Batch, materialOf } from "./batch.js";
import { Caps } from "./caps.js";
import { legible, luminance } from "./color.js";
import { Overlay } from "./overlay.js";
import { boxOf, mainColor, subtreeOf } from "./model.js";
import { planeOf } from "./section.js";
import { distance, identity } from "./space.js";
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

const ink = [0.094, 0.227, 0.549]; // of annotations that nobody gave a colour
const outline = [0.125, 0.14, 0.17]; // of what is cut

/** An annotation is picked, or applies to the face or the edge that is. */
function isMeant(picked, annotation) {
  if (!picked || picked.kind === "instance") return false;
  if (picked.kind === "annotation") return picked.annotation === annotation;
  return annotation.owner === picked.instance && annotation[picked.kind === "face" ? "faces" : "edges"].includes(picked.id);
}

const kinds = { triangles: "surface", lines: "line", points: "point" };

export class Drawing {
  #parts = [];
  #annotations = [];
  #halos = [];

  /**
   * @param {import("./stage.js").Stage} stage
   * @param {import("./session.js").Session} session
   */
  constructor(stage, session) {
    this.stage = stage;
    this.session = session;
    const { meshes, instances, annotations } = session.model;
    const make = (batches, isOnTop) => (placed, mesh) => {
      const { low, high } = boxOf(session.model, [{ mesh, world: identity() }]);
      const extent = isOnTop || meshes[mesh].length === 0 ? 0 : distance(low, high);
      for (const primitive of meshes[mesh]) {
        const kind = isOnTop && primitive.mode === "triangles" ? "plain" : kinds[primitive.mode];
        const batch = new Batch(primitive, materialOf(stage.uniforms, { kind, color: primitive.color, isOnTop, extent }), placed);
        batch.object.renderOrder = isOnTop ? 7000 : 0;
        batch.surface = mainColor(meshes[mesh]);
        batches.push(batch);
        stage.add(batch.object);
        if (isOnTop && kind === "line") this.#halo(batch, placed);
      }
    };
    const placed = placedByMesh(instances);
    placed.forEach(make(this.#parts, false));
    placedByMesh(annotations).forEach(make(this.#annotations, true));
    session.on(["shown", "picked", "view", "switches"], () => this.update());
    this.caps = new Caps(stage, session, placed);
    this.overlay = new Overlay(stage, session);
    session.on(["section", "shown", "switches"], () => this.updateSection());
    session.on(["camera"], () => {
      stage.camera = session.camera;
      stage.invalidate();
    });
    Object.assign(stage, { middle: session.middle, radius: session.radius, camera: session.camera });
    this.update();
    this.updateSection();
  }

  /** The ground around the strokes of an annotation, on which they are legible wherever they are. */
  #halo({ primitive }, placed) {
    const { uniforms } = this.stage;
    const halo = new Batch(primitive, materialOf(uniforms, { kind: "line", color: [1, 1, 1, 0.6], isOnTop: true }), placed);
    halo.material.uniforms.width = uniforms.haloWidth;
    halo.object.renderOrder = 6990;
    this.#halos.push(halo);
    this.stage.add(halo.object);
  }

  /** Colours that can be told from the ground: those of annotations, and of lines on surfaces or in the open. */
  setTheme({ ground, accent }) {
    this.stage.uniforms.accent.value.set(...accent);
    this.overlay.accent = accent;
    this.overlay.update();
    const recolor = (batch, behind, least) => {
      const said = batch.primitive.color.slice(0, 3);
      const isLost = Math.min(...said, ...behind) > 0.78; // white, for a dark ground
      const [r, g, b] = legible(isLost ? ink : said, behind, least);
      batch.material.uniforms.color.value.set(r, g, b, batch.primitive.color[3]);
    };
    for (const batch of this.#annotations) recolor(batch, ground, 4.5);
    for (const halo of this.#halos) halo.material.uniforms.color.value.set(...ground, 0.6);
    for (const batch of this.#parts)
      if (batch.primitive.mode !== "triangles")
        recolor(batch, batch.surface?.slice(0, 3) ?? ground, luminance(batch.surface ?? ground) < 0.03 ? 1.6 : 1.3);
    this.stage.invalidate();
  }

  update() {
    const { session } = this;
    const { picked, switches } = session;
    const marked = new Set(picked?.kind === "instance" ? subtreeOf(picked.instance) : []);
    for (const batch of this.#parts) {
      const isEdge = batch.primitive.mode === "lines" && batch.surface;
      batch.update((each) => session.isShown(each) && (!isEdge || switches.edges), (each) => marked.has(each));
    }
    for (const batch of this.#annotations)
      batch.update((each) => session.isAnnotationShown(each), (each) => isMeant(picked, each));
    for (const halo of this.#halos) halo.update((each) => session.isAnnotationShown(each), () => false);
    this.stage.invalidate();
  }

  updateSection() {
    const { section, partsBox } = this.session;
    this.plane = section ? planeOf(section, partsBox) : null;
    this.stage.uniforms.clip.value.set(...(this.plane ?? uncut));
    this.caps.update(this.plane, outline);
  }
}
