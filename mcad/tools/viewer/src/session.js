// What the user sees and does: what is shown and picked, the view, the section, the switches. Whoever shows any of it
// asks to be told when it changes.
import { firstCamera, fitted, project, savedCamera, standardView, withPerspective } from "./camera.js";
import { measure, shapeOf } from "./measure.js";
import { boxOf, subtreeOf } from "./model.js";
import { sectionOfView, startSection } from "./section.js";
import { cornersOf, distance, emptyBox, grow, isEmptyBox, mix } from "./space.js";

/**
 * @typedef {{kind: "instance", instance: object}
 *   | {kind: "face"|"edge", instance: object, id: string, primitive: object, at: number, point: number[]}
 *   | {kind: "annotation", annotation: object}} Picked
 */

export class Session {
  #listeners = [];
  aspect = 1;
  foot = 0;
  camera = firstCamera();
  /** @type {?Picked} */
  picked = null;
  view = null;
  switches = { edges: true, pmi: true, caps: true, measure: false };
  section = null;
  /** What is measured: up to two picked vertices, edges or faces, each with its `shape`. */
  measured = [];
  result = null;

  constructor(model, facts) {
    this.model = model;
    this.facts = facts;
    this.shown = Uint8Array.from(model.instances, (instance) => (instance.isHidden ? 0 : 1));
    this.box = emptyBox();
    for (const list of [model.instances, model.annotations])
      for (const corner of cornersOf(boxOf(model, list))) grow(this.box, corner);
    if (isEmptyBox(this.box)) this.box = { low: [0, 0, 0], high: [1, 1, 1] };
    this.partsBox = boxOf(model, model.instances);
    if (isEmptyBox(this.partsBox)) this.partsBox = this.box;
    this.middle = mix(this.box.low, this.box.high, 0.5);
    this.radius = Math.max(distance(this.box.low, this.box.high) / 2, 1e-6);
  }

  /** Calls act(what) after any of these has changed: shown, picked, view, switches, section, measured, camera. */
  on(what, act) {
    this.#listeners.push([what, act]);
  }

  #tell(...changes) {
    for (const [what, act] of this.#listeners) {
      const change = changes.find((each) => what.includes(each));
      if (change) act(change);
    }
  }

  isShown(instance) {
    return this.shown[instance.index] === 1;
  }

  /** All of an instance is shown, some of it, or none. */
  shownOf(instance) {
    const states = subtreeOf(instance)
      .filter((each) => each.mesh !== null || !each.children.length)
      .map((each) => this.isShown(each));
    return states.every(Boolean) ? "all" : states.some(Boolean) ? "some" : "none";
  }

  isAnnotationShown(annotation) {
    if (!this.switches.pmi || !this.isShown(annotation.owner)) return false;
    const { view } = this;
    return view ? view.owner === annotation.owner && view.annotations.has(annotation.id) : !annotation.isHidden;
  }

  show(instance, isShown = true) {
    for (const each of subtreeOf(instance)) this.shown[each.index] = isShown ? 1 : 0;
    this.#tell("shown");
  }

  isolate(instance) {
    this.shown.fill(0);
    this.show(instance);
  }

  showAll() {
    this.shown.fill(1);
    this.#tell("shown");
  }

  /** @param {?Picked} picked */
  pick(picked) {
    this.picked = picked;
    this.#tell("picked");
  }

  turnOn(name, isOn = !this.switches[name]) {
    this.switches[name] = isOn;
    if (name === "measure") this.forgetMeasured();
    this.#tell("switches");
  }

  /** Moves the camera at once. */
  look(camera) {
    this.camera = camera;
    this.#tell("camera");
  }

  /** What of the model is seen at present; all of it if nothing is. */
  #visiblePoints(instances) {
    const shown = instances.filter((each) => this.isShown(each));
    const annotations = this.model.annotations.filter((each) => this.isAnnotationShown(each));
    const boxes = [...shown, ...(instances === this.model.instances ? annotations : [])];
    const points = boxes.flatMap((each) => cornersOf(boxOf(this.model, [each])));
    return points.length > 0 ? points : cornersOf(this.box);
  }

  /** The camera that shows everything that is shown, or these instances. */
  fittedTo(instances = this.model.instances, camera = this.camera) {
    return fitted(camera, this.#visiblePoints(instances), this.aspect, this.foot);
  }

  standardView(name) {
    return this.fittedTo(this.model.instances, standardView(this.camera, name));
  }
  perspective(isOn) {
    return withPerspective(this.camera, isOn);
  }

  /** Shows a saved view, or all annotations again if it is null. */
  useView(view) {
    this.view = view;
    this.section = view?.clipping ? sectionOfView(view) : null;
    if (view) this.switches.pmi = true;
    this.#tell("view", "section", "switches");
  }

  /** The camera of a saved view, zoomed out where its annotations would not fit: it may be of a wider window. */
  cameraOf(view) {
    const camera = savedCamera(view, this.middle, this.radius);
    const meant = (each) => view.owner === each.owner && view.annotations.has(each.id);
    const reach = Math.max(
      ...this.model.annotations
        .filter(meant)
        .flatMap((each) => cornersOf(boxOf(this.model, [each])))
        .flatMap((point) => project(camera, point, this.aspect, this.radius)?.slice(0, 2).map(Math.abs) ?? []),
      0,
    );
    const most = 3;
    return reach > 1 ? { ...camera, height: camera.height * Math.min(reach * 1.03, most) } : camera;
  }

  /** Changes the section, or begins one; null ends it. */
  cut(change) {
    this.section = change && { ...(this.section ?? startSection(this.camera, this.model.toWorld)), ...change };
    this.#tell("section");
  }

  /** Adds a place to measure from or to; a third one begins anew. */
  measure(picked) {
    const next = { ...picked, shape: shapeOf(picked, this.facts) };
    this.measured = this.measured.length === 2 ? [next] : [...this.measured, next];
    this.result = this.measured.length === 2 ? measure(this.measured[0].shape, next.shape) : null;
    this.#tell("measured");
  }

  forgetMeasured() {
    this.measured = [];
    this.result = null;
    this.#tell("measured");
  }
}
