// The controls of the section plane.
import { button, make } from "./dom.js";
import { reachOf, sectionAcross } from "./section.js";
import { dot, scale, transformDirection } from "./space.js";

const steps = 1000;

export class SectionBar {
  constructor(session) {
    this.session = session;
    this.axes = ["X", "Y", "Z"].map((label, axis) =>
      make(
        "button.chip",
        {
          type: "button",
          "aria-label": `Across ${label}`,
          onclick: () => session.cut(sectionAcross(axis, session.camera, session.model.toWorld)),
        },
        label,
      ),
    );
    this.slider = make("input", {
      id: "section-at",
      type: "range",
      min: 0,
      max: steps,
      "aria-label": "Place of the section",
      oninput: () => this.#slide(),
    });
    this.output = make("output", { for: "section-at" });
    this.capped = make("input", {
      type: "checkbox",
      id: "section-caps",
      onchange: () => session.turnOn("caps", this.capped.checked),
    });
    this.element = make(
      "section.card.bar",
      { id: "section-bar", "aria-label": "Section", hidden: true },
      make(
        "div.chips",
        { role: "group", "aria-label": "Axis" },
        ...this.axes,
        button("flip", "Other side", () => this.#flip(), { isBare: true }),
        make("label.check", {}, this.capped, "Caps"),
        button("close", "End the section", () => session.cut(null), { isBare: true }),
      ),
      make("div.slide", {}, this.slider, this.output),
    );
    session.on(["section", "switches"], () => this.#update());
  }

  /** The direction in which the offset is told: along the axis of the file, or the normal of a saved view. */
  #direction({ axis, normal }) {
    if (axis === "view") return { normal, sign: 1 };
    const along = transformDirection(
      this.session.model.toWorld,
      [0, 1, 2].map((k) => (k === axis ? 1 : 0)),
    );
    return { normal: along, sign: Math.sign(dot(along, normal)) };
  }

  #slide() {
    const { session } = this;
    const { normal, sign } = this.#direction(session.section);
    const [low, high] = reachOf(normal, session.partsBox);
    session.cut({ offset: sign * (low + (this.slider.value / steps) * (high - low)) });
  }

  #flip() {
    const { normal, offset } = this.session.section;
    this.session.cut({ normal: scale(normal, -1), offset: offset === null ? null : -offset });
  }

  #update() {
    const { section, switches, partsBox, facts } = this.session;
    this.element.hidden = !section;
    if (!section) return;
    const { normal, sign } = this.#direction(section);
    const [low, high] = reachOf(normal, partsBox);
    const at = section.offset === null ? (low + high) / 2 : sign * section.offset;
    this.axes.forEach((each, axis) => each.setAttribute("aria-pressed", String(axis === section.axis)));
    this.slider.value = Math.round(((at - low) / (high - low || 1)) * steps);
    const step = 10 ** Math.floor(Math.log10(facts.fromMeters(high - low) / steps || 1));
    const text = facts.length(Math.round(facts.fromMeters(at) / step) * step);
    this.slider.setAttribute("aria-valuetext", text);
    this.output.textContent = section.axis === "view" ? text : `${"xyz"[section.axis]} = ${text}`;
    this.capped.checked = switches.caps;
  }
}
