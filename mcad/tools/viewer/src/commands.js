// Everything that a button or a key does, in one table.
import { standardViews } from "./camera.js";

/**
 * @typedef {object} Command
 * @property {string} name
 * @property {string} label
 * @property {string} key that runs it outside of text fields
 * @property {"view"|"switch"|"more"|"none"} group where its button is
 * @property {() => void} run
 * @property {() => boolean} [isOn] of one that switches something
 */

const capital = (text) => text[0].toUpperCase() + text.slice(1);

/** The instance that is meant by hide and isolate. */
const meant = ({ picked }) => picked?.instance ?? picked?.annotation?.owner ?? null;

/** @returns {Command[]} */
export function commandsOf(app, { theme, help, search, escape }) {
  const { session } = app;
  const onMeant = (act) => () => meant(session) && act(meant(session));
  const toggle = (name, label, key) => ({ name, label, key, group: "switch", run: () => session.turnOn(name), isOn: () => session.switches[name] });
  return [
    { name: "fit", label: "Fit", key: "f", group: "view", run: () => app.fit() },
    ...standardViews.map((name, i) => ({ name, label: capital(name), key: String(i + 1), group: "view", run: () => app.standardView(name) })),
    {
      name: "perspective", label: "Perspective", key: "o", group: "view",
      run: () => app.fly(session.perspective(!session.camera.isPerspective)), isOn: () => session.camera.isPerspective,
    },
    toggle("edges", "Edges", "e"),
    toggle("pmi", "PMI", "p"),
    { name: "section", label: "Section", key: "x", group: "switch", run: () => session.cut(session.section ? null : {}), isOn: () => Boolean(session.section) },
    toggle("measure", "Measure", "m"),
    { name: "all", picture: "shown", label: "Show all", key: "a", group: "more", run: () => session.showAll() },
    { name: "theme", label: "Dark", key: "t", group: "more", run: () => theme.toggle(), isOn: () => theme.name === "dark" },
    { name: "help", label: "Keys", key: "?", group: "more", run: help },
    { name: "hide", label: "Hide or show what is picked", key: "h", group: "none", run: onMeant((each) => session.show(each, session.shownOf(each) === "none")) },
    { name: "isolate", label: "Show only what is picked", key: "i", group: "none", run: onMeant((each) => session.isolate(each)) },
    { name: "zoom", label: "Zoom to what is picked", key: "z", group: "none", run: onMeant((each) => app.fit([each])) },
    { name: "search", label: "Search", key: "/", group: "none", run: search },
    { name: "escape", label: "Pick nothing, end measuring", key: "Escape", group: "none", run: escape },
  ];
}

/** Steps of the keys that move the camera while the canvas has the focus: [what, ...]. */
const step = 40;
export const canvasKeys = {
  ArrowLeft: (app, isPan) => (isPan ? app.pan(-step, 0) : app.turn(-step, 0)),
  ArrowRight: (app, isPan) => (isPan ? app.pan(step, 0) : app.turn(step, 0)),
  ArrowUp: (app, isPan) => (isPan ? app.pan(0, -step) : app.turn(0, -step)),
  ArrowDown: (app, isPan) => (isPan ? app.pan(0, step) : app.turn(0, step)),
  "+": (app) => app.zoom(1 / 1.25, ...middle(app)),
  "=": (app) => app.zoom(1 / 1.25, ...middle(app)),
  "-": (app) => app.zoom(1.25, ...middle(app)),
  Enter: (app) => app.click(...middle(app)),
  " ": (app) => app.click(...middle(app)),
};

function middle({ stage }) {
  const box = stage.canvas.getBoundingClientRect();
  return [box.left + box.width / 2, box.top + box.height / 2];
}

/** Listens to the keys of the whole page. */
export function listenToKeys(app, commands) {
  const isText = (element) => element.matches("input[type=search], input[type=number], select, textarea");
  addEventListener("keydown", (event) => {
    if (event.ctrlKey || event.metaKey || event.altKey || document.querySelector("dialog[open]")) return;
    const { target, key, shiftKey } = event;
    let run = null;
    if (target === app.stage.canvas && canvasKeys[key]) run = () => canvasKeys[key](app, shiftKey);
    else if (!isText(target) || key === "Escape") run = commands.find((each) => each.key === key)?.run;
    if (!run) return;
    event.preventDefault();
    run();
  });
}
