// Joins what the user does on the canvas to the session: moving the camera, and finding what is under a place.
import { between, eyeDistance, panned, project, rayThrough, turned, windowOf, zoomed } from "./camera.js";
import { nearestLine, nearestTriangle } from "./picking.js";
import { distance, dot, transformNormal } from "./space.js";

const flight = 260; // milliseconds
const reaches = { annotation: 6, edge: 7, vertex: 10 }; // in pixels

export class App {
  #flying = 0;
  #aim = () => this.session.fittedTo(); // what the camera was last sent to; null once the user has moved it

  constructor(session, stage) {
    this.session = session;
    this.stage = stage;
  }

  /** Moves the camera there, in a short flight unless the user wants no motion. */
  fly(to) {
    cancelAnimationFrame(this.#flying);
    const from = this.session.camera;
    if (matchMedia("(prefers-reduced-motion: reduce)").matches || from.isPerspective !== to.isPerspective)
      return this.session.look(to);
    const start = performance.now();
    const step = (now) => {
      const t = Math.min(1, Math.max(0, (now - start) / flight));
      this.session.look(t < 1 ? between(from, to, t * t * (3 - 2 * t)) : to);
      if (t < 1) this.#flying = requestAnimationFrame(step);
    };
    this.#flying = requestAnimationFrame(step);
  }

  fit(instances) {
    this.#aim = instances ? null : () => this.session.fittedTo();
    this.fly(this.session.fittedTo(instances));
  }

  standardView(name) {
    this.#aim = () => this.session.fittedTo();
    this.fly(this.session.standardView(name));
  }

  /** Shows a saved view, or all annotations again from where they are seen. */
  useView(view) {
    this.session.useView(view);
    if (!view) return;
    this.#aim = () => this.session.cameraOf(view);
    this.fly(this.#aim());
  }

  /** The room for the canvas has changed: what filled it is to fill it again. */
  refit() {
    if (!this.#aim) return;
    cancelAnimationFrame(this.#flying);
    this.session.look(this.#aim());
  }

  #look(camera) {
    this.#aim = null;
    cancelAnimationFrame(this.#flying);
    this.session.look(camera);
  }

  turn(dx, dy) {
    this.#look(turned(this.session.camera, dx / this.stage.height, dy / this.stage.height));
  }
  pan(dx, dy) {
    this.#look(panned(this.session.camera, dx / this.stage.height, dy / this.stage.height, this.stage.aspect));
  }
  zoom(factor, x, y) {
    this.#look(zoomed(this.session.camera, factor, ...this.toWindow(x, y), this.stage.aspect));
  }

  /** Pixels of the page on the window from -1 to 1, and back. */
  toWindow(x, y) {
    const box = this.stage.canvas.getBoundingClientRect();
    return [((x - box.left) / box.width) * 2 - 1, 1 - ((y - box.top) / box.height) * 2];
  }

  /** Where on the page a point of the world is; null behind the eye. */
  toPage(point) {
    const { camera, radius } = this.session;
    const at = project(camera, point, this.stage.aspect, radius);
    const box = this.stage.canvas.getBoundingClientRect();
    return at && [box.left + ((at[0] + 1) / 2) * box.width, box.top + ((1 - at[1]) / 2) * box.height];
  }

  /** Picks what is at a place of the page; to measure, if that is switched on. */
  click(x, y) {
    const { session } = this;
    const found = this.find(x, y);
    if (session.switches.measure && found) session.measure(found);
    else if (!session.switches.measure) session.pick(found);
  }

  /** What is at a place of the page. Vertices and edges are found where measuring is switched on. */
  find(x, y) {
    const { session, stage } = this;
    const { camera, model, radius, switches } = session;
    const ray = rayThrough(camera, ...this.toWindow(x, y), stage.aspect, radius);
    const pixel = windowOf(camera, stage.aspect).height / stage.height;
    const far = eyeDistance(camera, stage.aspect, radius);
    const reach = (pixels) => (t) => pixels * pixel * (camera.isPerspective ? Math.max(t, 0) / far : 1);
    const plane = this.plane?.();
    const isKept = (point) => !plane || dot(plane, point) + plane[3] <= 0;
    if (!switches.measure) {
      const drawn = model.annotations.filter((each) => session.isAnnotationShown(each));
      const stroke = nearestLine(model, drawn, ray, reach(reaches.annotation)) ?? nearestTriangle(model, drawn, ray);
      if (stroke) return { kind: "annotation", annotation: stroke.placed };
    }
    const shown = model.instances.filter((each) => session.isShown(each));
    const surface = nearestTriangle(model, shown, ray, isKept);
    if (switches.measure) {
      const deepest = surface ? surface.t + reach(2 * reaches.edge)(surface.t) : Infinity;
      const edge = nearestLine(model, shown, ray, reach(reaches.edge), (point, t) => t <= deepest && isKept(point));
      const piece = edge && { instance: edge.placed, primitive: edge.primitive, at: edge.at, id: edge.id };
      const vertex = edge?.ends.find((end) => distance(end, edge.point) <= reach(reaches.vertex)(edge.t));
      if (vertex) return { kind: "vertex", ...piece, point: vertex };
      if (edge) return { kind: "edge", ...piece, point: edge.point };
    }
    if (!surface) return null;
    const { placed: instance, primitive, at, id, point } = surface;
    const isCap = plane && this.#isInside(surface, ray);
    if (at < 0 || isCap) return switches.measure ? null : { kind: "instance", instance };
    return { kind: "face", instance, primitive, at, id, point };
  }

  /** A triangle seen from behind, through a cap: what is there is the part, not the face. */
  #isInside({ placed, primitive, piece }, ray) {
    const { normals, indices } = primitive;
    if (!normals) return false;
    const i = 3 * indices[3 * piece];
    return dot(transformNormal(placed.world, normals.slice(i, i + 3)), ray.direction) > 1e-3;
  }
}
