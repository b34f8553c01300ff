// Dark and light: the palette, of which the style sheet takes its variables, and which of the two is used.

/** Colours as the style sheet and the canvas have them. Texts and controls keep the contrast of WCAG AA. */
export const palettes = {
  light: {
    ground: "#f3f5f8", groundLow: "#dfe4eb", panel: "#ffffff", raised: "#f1f4f8", line: "#d5dbe3", text: "#1b2430",
    muted: "#566273", accent: "#0b62c4", onAccent: "#ffffff", chosen: "#dbe9fb", control: "#7d8897", warning: "#9a4a00",
  },
  dark: {
    ground: "#343b45", groundLow: "#23282f", panel: "#1d2127", raised: "#282e36", line: "#3b434e", text: "#e8ecf2",
    muted: "#a7b1bf", accent: "#6cb0ff", onAccent: "#0a1a2c", chosen: "#253d5a", control: "#7f8b9b", warning: "#ffb366",
  },
};

const cssName = (key) => `--${key.replace(/[A-Z]/g, (letter) => `-${letter.toLowerCase()}`)}`;

export class Theme {
  #system = matchMedia("(prefers-color-scheme: dark)");
  #chosen = null;

  /** @param {(name: string, palette: object) => void} apply told at once and of every change */
  constructor(apply) {
    this.apply = apply;
    this.#system.addEventListener("change", () => this.#tell());
    this.#tell();
  }

  get name() { return this.#chosen ?? (this.#system.matches ? "dark" : "light"); }

  toggle() {
    this.#chosen = this.name === "dark" ? "light" : "dark";
    this.#tell();
  }

  #tell() {
    const root = document.documentElement;
    root.dataset.theme = this.name;
    for (const [key, color] of Object.entries(palettes[this.name])) root.style.setProperty(cssName(key), color);
    this.apply(this.name, palettes[this.name]);
  }
}
