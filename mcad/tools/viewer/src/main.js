// Starts the page: reads what it holds, and puts together what shows it.
import { App } from "./app.js";
import { fromHex } from "./color.js";
import { commandsOf, listenToKeys } from "./commands.js";
import { unpack } from "./data.js";
import { Details, sentenceOf } from "./details.js";
import { make } from "./dom.js";
import { Drawing } from "./drawing.js";
import { Facts } from "./facts.js";
import { Gestures, listen } from "./gestures.js";
import { readGlb } from "./glb.js";
import { MeasureBar } from "./measure_bar.js";
import { buildModel } from "./model.js";
import { PartsPanel } from "./parts_panel.js";
import { PmiPanel } from "./pmi_panel.js";
import { reportPanel } from "./report_panel.js";
import { SectionBar } from "./section_bar.js";
import { Session } from "./session.js";
import { Stage } from "./stage.js";
import { Tabs } from "./tabs.js";
import { Theme } from "./theme.js";
import { helpDialog, Toolbar } from "./toolbar.js";

async function readSession() {
  const textOf = (id) => document.getElementById(id)?.textContent ?? "";
  if (!textOf("model")) throw new Error("This page holds no model.");
  const glb = await unpack(textOf("model"), "model");
  const facts = await unpack(textOf("facts"), "table of facts");
  for (const id of ["model", "facts"]) document.getElementById(id).remove(); // twice the memory otherwise
  return new Session(buildModel(readGlb(glb)), new Facts(JSON.parse(new TextDecoder().decode(facts))));
}

function makeStage(canvas) {
  try {
    return new Stage(canvas);
  } catch {
    throw new Error("This browser shows no three-dimensional pictures: WebGL is switched off or missing.");
  }
}

/** Keeps the canvas as large as the room for it. */
function followSize(view, app, views) {
  const { session, stage } = app;
  let isFirst = true;
  new ResizeObserver(() => {
    stage.resize(view.clientWidth, view.clientHeight, Math.min(devicePixelRatio, 2));
    session.aspect = stage.aspect;
    const isBelow = views.offsetTop > view.clientHeight / 2;
    session.foot = ((isBelow ? 1 : -1) * (views.offsetHeight + 16)) / stage.height;
    const active = isFirst && session.model.views.find((each) => each.isActive);
    isFirst = false;
    if (active) app.useView(active);
    else app.refit();
  }).observe(view);
}

async function start() {
  const session = await readSession();
  document.title = session.facts.file || "Model";
  const canvas = make("canvas", {
    id: "canvas",
    tabindex: 0,
    role: "application",
    "aria-label": "Model; arrow keys turn it, Enter picks what is in the middle",
  });
  const stage = makeStage(canvas);
  const drawing = new Drawing(stage, session);
  const app = new App(session, stage);
  app.plane = () => drawing.plane;
  let tools = null;
  const theme = new Theme((name, palette) => {
    drawing.setTheme({ ground: fromHex(palette.ground), accent: fromHex(palette.accent) });
    tools?.update();
  });

  const parts = new PartsPanel(session);
  const pmi = new PmiPanel(session, (view) => app.useView(view));
  const tabs = new Tabs([
    ["parts", "Parts", parts.element],
    ["pmi", "PMI", pmi.element],
    ["report", "Report", reportPanel(session)],
  ]);
  const details = new Details(session, app);
  const commands = commandsOf(app, {
    theme,
    help: () => help.showModal(),
    search: () => {
      tabs.show("parts");
      parts.search.focus();
    },
    escape: () => {
      if (session.switches.measure) session.turnOn("measure", false);
      else session.pick(null);
      canvas.focus();
    },
  });
  const help = helpDialog(commands);
  const views = new Toolbar(commands, ["view"], { id: "views", "aria-label": "Views" });
  tools = new Toolbar(commands, ["switch", "more"], { id: "tools", "aria-label": "Tools" });
  session.on(["switches", "section", "camera", "view"], () => {
    views.update();
    tools.update();
  });
  const spoken = make("p.unseen", { id: "spoken", role: "status", "aria-live": "polite" });
  session.on(["picked"], () => (spoken.textContent = sentenceOf(session, session.picked)));

  const view = make(
    "main",
    { id: "view", "aria-label": "Picture of the model" },
    canvas,
    make("div.cross", { "aria-hidden": "true" }),
    make("div.bars", {}, new SectionBar(session).element, new MeasureBar(session).element),
    details.element,
    views.element,
  );
  document.getElementById("status").remove();
  document.body.append(
    make("header", {}, make("h1", { title: document.title }, document.title), tools.element),
    tabs.element,
    view,
    help,
    spoken,
  );
  listen(canvas, new Gestures(app));
  listenToKeys(app, commands);
  followSize(view, app, views.element);
  if (session.model.annotations.length > 0 && session.model.instances.length < 4) tabs.show("pmi", false);
  globalThis.viewer = { app, session, stage }; // to look at from the browser's console
}

start().catch((error) => {
  const status = document.getElementById("status") ?? document.body.appendChild(make("p", { id: "status" }));
  status.className = "failed";
  status.setAttribute("role", "alert");
  status.textContent = error.message;
  console.error(error);
});
