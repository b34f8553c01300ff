// Buttons of commands, and the list of keys.
import { button, make } from "./dom.js";

/** The buttons of some groups of commands; they show what is switched on. */
export class Toolbar {
  #buttons = [];

  constructor(commands, groups, members) {
    this.element = make("div.toolbar", { role: "toolbar", ...members });
    for (const command of commands.filter(({ group }) => groups.includes(group))) {
      const element = button(command.picture ?? command.name, command.label, command.run, {
        title: `${command.label} (${command.key})`, "data-command": command.name, "aria-keyshortcuts": command.key,
      });
      this.#buttons.push([command, element]);
      this.element.append(element);
    }
    this.update();
  }

  update() {
    for (const [{ isOn }, element] of this.#buttons) if (isOn) element.setAttribute("aria-pressed", String(isOn()));
  }
}

const pointing = [
  ["Drag, one finger", "turn"], ["Right or Shift and drag, two fingers", "move"], ["Wheel, pinch", "zoom"], ["Click, tap", "pick"],
  ["← → ↑ ↓ on the model", "turn"], ["Shift and ← → ↑ ↓", "move"], ["+ −", "zoom"], ["Enter on the model", "pick what is in the middle"],
];

/** A dialog that lists all keys. */
export function helpDialog(commands) {
  const rows = [...pointing, ...commands.map(({ key, label }) => [key, label])];
  const dialog = make("dialog", { "aria-label": "Keys" },
    make("div.head", {}, make("h2", {}, "Mouse, fingers and keys"), button("close", "Close", () => dialog.close(), { isBare: true })),
    make("dl.keys", {}, ...rows.map(([key, label]) => make("div", {}, make("dt", {}, make("kbd", {}, key)), make("dd", {}, label)))));
  return dialog;
}
