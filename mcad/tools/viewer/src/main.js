// Starts the page: reads what it holds, and puts together what shows it.
import { fromHex } from "./color.js";
import { panned, turned, zoomed } from "./camera.js";
import { unpack } from "./data.js";
import { Drawing } from "./drawing.js";
import { Facts } from "./facts.js";
import { Gestures, listen } from "./gestures.js";
import { readGlb } from "./glb.js";
import { buildModel } from "./model.js";
import { Session } from "./session.js";
import { Stage } from "./stage.js";
import { Theme } from "./theme.js";

async function start() {
  const textOf = (id) => document.getElementById(id)?.textContent ?? "";
  if (!textOf("model")) throw new Error("This page holds no model.");
  const [glb, facts] = await Promise.all([unpack(textOf("model"), "model"), unpack(textOf("facts"), "table of facts")]);
  const model = buildModel(readGlb(glb));
  const session = new Session(model, new Facts(JSON.parse(new TextDecoder().decode(facts))));
  document.title = session.facts.file;

  const view = document.createElement("main");
  view.id = "view";
  const canvas = document.createElement("canvas");
  view.append(canvas);
  document.body.append(view);
  const stage = new Stage(canvas);
  const drawing = new Drawing(stage, session);
  new Theme((name, palette) => drawing.setTheme({ ground: fromHex(palette.ground), accent: fromHex(palette.accent) }));
  let isFirst = true;
  new ResizeObserver(() => {
    stage.resize(view.clientWidth, view.clientHeight, Math.min(devicePixelRatio, 2));
    session.aspect = stage.aspect;
    if (isFirst) session.look(session.fittedTo());
    isFirst = false;
  }).observe(view);
  const toWindow = (x, y) => {
    const box = canvas.getBoundingClientRect();
    return [((x - box.left) / box.width) * 2 - 1, 1 - ((y - box.top) / box.height) * 2];
  };
  listen(canvas, new Gestures({
    turn: (dx, dy) => session.look(turned(session.camera, dx / stage.height, dy / stage.height)),
    pan: (dx, dy) => session.look(panned(session.camera, dx / stage.height, dy / stage.height, stage.aspect)),
    zoom: (factor, x, y) => session.look(zoomed(session.camera, factor, ...toWindow(x, y), stage.aspect)),
    click: () => {},
  }));
  document.getElementById("status").remove();
}

start().catch((error) => {
  document.getElementById("status").textContent = error.message;
  console.error(error);
});
