// Panels of which one is shown at a time; on a phone a sheet that opens and closes.
import { make } from "./dom.js";

export class Tabs {
  #tabs;

  /** @param {[string, string, HTMLElement][]} panels name, label and element of each */
  constructor(panels) {
    this.#tabs = panels.map(([name, label, panel]) => {
      panel.id = `panel-${name}`;
      panel.setAttribute("role", "tabpanel");
      panel.setAttribute("aria-labelledby", `tab-${name}`);
      const tab = make("button.tab", { type: "button", role: "tab", id: `tab-${name}`, "aria-controls": panel.id, onclick: () => this.#press(name) }, label);
      return { name, panel, tab };
    });
    this.element = make("aside", { id: "side", "aria-label": "Model" },
      make("div.tabs", { role: "tablist", "aria-label": "Panels", onkeydown: (event) => this.#key(event) }, ...this.#tabs.map(({ tab }) => tab)),
      ...panels.map(([, , panel]) => panel));
    this.show(panels[0][0], false);
  }

  /** A second press on the tab that is shown closes the sheet. */
  #press(name) {
    const isShown = name === this.shown && this.element.classList.contains("open");
    this.show(name, !isShown);
  }

  show(name, isOpen = true) {
    this.shown = name;
    this.element.classList.toggle("open", isOpen);
    for (const { name: each, panel, tab } of this.#tabs) {
      panel.hidden = each !== name;
      tab.setAttribute("aria-selected", String(each === name));
      tab.tabIndex = each === name ? 0 : -1;
    }
  }

  #key(event) {
    const way = { ArrowRight: 1, ArrowLeft: -1 }[event.key];
    if (!way) return;
    const at = this.#tabs.findIndex(({ name }) => name === this.shown);
    const { name, tab } = this.#tabs[(at + way + this.#tabs.length) % this.#tabs.length];
    this.show(name);
    tab.focus();
    event.preventDefault();
    event.stopPropagation();
  }
}
