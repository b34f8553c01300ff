// Mouse, pen and fingers on the canvas: drags turn, pan and zoom; what does not move is a click.

const slop = 5; // pixels that a click may move

/**
 * Follows pointers. All positions are in pixels of the page.
 * @param {{turn: Function, pan: Function, zoom: Function, click: Function}} act
 *   turn(dx, dy) and pan(dx, dy) in pixels; zoom(factor, x, y); click(x, y)
 */
export class Gestures {
  #pointers = new Map();
  #isClick = false;

  constructor(act) {
    this.act = act;
  }

  down({ pointerId, clientX, clientY, button = 0, shiftKey = false, ctrlKey = false }) {
    this.#pointers.set(pointerId, { x: clientX, y: clientY, startX: clientX, startY: clientY });
    this.#isClick = this.#pointers.size === 1 && button === 0;
    this.isPan = button !== 0 || shiftKey || ctrlKey;
  }

  move({ pointerId, clientX, clientY }) {
    const pointer = this.#pointers.get(pointerId);
    if (!pointer) return;
    if (this.#isClick && Math.hypot(clientX - pointer.startX, clientY - pointer.startY) <= slop) return;
    this.#isClick = false;
    const [dx, dy] = [clientX - pointer.x, clientY - pointer.y];
    const other = [...this.#pointers.entries()].find(([id]) => id !== pointerId)?.[1];
    if (other) {
      const apart = (x, y) => Math.hypot(x - other.x, y - other.y) || 1;
      const factor = apart(pointer.x, pointer.y) / apart(clientX, clientY);
      this.act.pan(dx / 2, dy / 2);
      this.act.zoom(factor, (clientX + other.x) / 2, (clientY + other.y) / 2);
    } else if (this.isPan) {
      this.act.pan(dx, dy);
    } else {
      this.act.turn(dx, dy);
    }
    Object.assign(pointer, { x: clientX, y: clientY });
  }

  up({ pointerId, clientX, clientY }) {
    if (this.#pointers.delete(pointerId) && this.#isClick) this.act.click(clientX, clientY);
    this.#isClick = false;
  }

  cancel({ pointerId }) {
    this.#pointers.delete(pointerId);
    this.#isClick = false;
  }

  wheel({ deltaY, deltaMode, clientX, clientY }) {
    const pixels = deltaY * (deltaMode === 1 ? 24 : deltaMode === 2 ? 240 : 1);
    this.act.zoom(1.0015 ** Math.max(-400, Math.min(400, pixels)), clientX, clientY);
  }
}

/** Has the gestures follow the events of an element. */
export function listen(element, gestures) {
  element.addEventListener("pointerdown", (event) => {
    element.setPointerCapture(event.pointerId);
    gestures.down(event);
  });
  element.addEventListener("pointermove", (event) => gestures.move(event));
  element.addEventListener("pointerup", (event) => gestures.up(event));
  element.addEventListener("pointercancel", (event) => gestures.cancel(event));
  element.addEventListener("contextmenu", (event) => event.preventDefault());
  element.addEventListener("wheel", (event) => {
    event.preventDefault();
    gestures.wheel(event);
  }, { passive: false });
}
