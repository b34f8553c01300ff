// Draws the model: one draw call for each primitive of a mesh, however often it is placed, and only when something
// has changed.
import { OrthographicCamera, PerspectiveCamera, Scene, Vector2, Vector3, Vector4, WebGLRenderer } from "three";
import { eyeDistance, rightOf, windowOf } from "./camera.js";
import { along, dot, subtract } from "./space.js";

/** Nothing is cut away. */
export const uncut = [0, 0, 0, -1];

export class Stage {
  #renderer;
  #scene = new Scene();
  #cameras = [new OrthographicCamera(), new PerspectiveCamera()];
  #pending = false;
  /** Shared by all materials. */
  uniforms = {
    clip: { value: new Vector4(...uncut) },
    uncut: { value: new Vector4(...uncut) },
    accent: { value: new Vector3(0, 0.4, 0.9) },
    viewport: { value: new Vector2(1, 1) },
    edgeWidth: { value: 1.3 },
    strokeWidth: { value: 1.6 },
    haloWidth: { value: 5 },
  };
  frames = 0;
  camera = null;
  middle = [0, 0, 0];
  radius = 1;
  onFrame = () => {};

  /**
   * @param {HTMLCanvasElement} canvas
   * @throws {Error} where there is no WebGL
   */
  constructor(canvas) {
    this.#renderer = new WebGLRenderer({ canvas, antialias: true, alpha: true, stencil: true });
    this.#renderer.info.autoReset = false;
    this.#renderer.setClearColor(0, 0);
    canvas.addEventListener("webglcontextrestored", () => this.invalidate());
  }

  get canvas() { return this.#renderer.domElement; }
  get aspect() { return this.width / this.height; }

  /** Calls, triangles and frames so far. */
  get statistics() {
    const { calls, triangles } = this.#renderer.info.render;
    return { calls, triangles, frames: this.frames };
  }

  add(...objects) { this.#scene.add(...objects); this.invalidate(); }
  remove(...objects) { this.#scene.remove(...objects); this.invalidate(); }

  resize(width, height, pixels) {
    this.width = Math.max(1, width);
    this.height = Math.max(1, height);
    this.#renderer.setPixelRatio(pixels);
    this.#renderer.setSize(this.width, this.height, false);
    this.uniforms.viewport.value.set(this.width * pixels, this.height * pixels);
    this.uniforms.edgeWidth.value = 1.3 * pixels;
    this.uniforms.strokeWidth.value = 1.6 * pixels;
    this.uniforms.haloWidth.value = 5 * pixels;
    this.invalidate();
  }

  /** Has the next frame drawn. */
  invalidate() {
    if (this.#pending) return;
    this.#pending = true;
    requestAnimationFrame(() => {
      this.#pending = false;
      if (this.camera && this.width) this.#draw();
    });
  }

  #draw() {
    const { camera, aspect } = this;
    const { height, width } = windowOf(camera, aspect);
    const eye = along(camera.target, camera.back, eyeDistance(camera, aspect, this.radius));
    const depth = dot(subtract(eye, this.middle), camera.back);
    const lens = this.#cameras[camera.isPerspective ? 1 : 0];
    const reach = this.radius * 1.05;
    if (camera.isPerspective) {
      lens.fov = (Math.atan(height / 2 / eyeDistance(camera, aspect, this.radius)) * 360) / Math.PI;
      lens.aspect = aspect;
      lens.near = Math.max(depth - reach, reach * 1e-3);
      lens.far = Math.max(depth + reach, lens.near * 10);
    } else {
      Object.assign(lens, { left: -width / 2, right: width / 2, bottom: -height / 2, top: height / 2 });
      lens.near = depth - reach;
      lens.far = depth + reach;
    }
    lens.updateProjectionMatrix();
    lens.matrixAutoUpdate = false;
    lens.matrix.set(...[0, 1, 2].flatMap((k) => [rightOf(camera)[k], camera.up[k], camera.back[k], eye[k]]), 0, 0, 0, 1);
    lens.updateMatrixWorld(true);
    this.#renderer.info.reset();
    this.#renderer.render(this.#scene, lens);
    ++this.frames;
    this.onFrame(lens);
  }
}

