// Starts Debian's Chromium without a display, and opens pages in it.
import assert from "node:assert/strict";
import { spawnSync } from "node:child_process";
import { existsSync, mkdirSync, rmSync } from "node:fs";
import { createRequire } from "node:module";
import { join, resolve } from "node:path";
import { after, before } from "node:test";

const [zeqProgram, zeqSamples, buildDir, workDir] = process.argv.slice(2);
export const zeq = zeqProgram;
const chromium = "/usr/bin/chromium";

function skip(reason) {
  console.log(`skipped: ${reason}`);
  process.exit(127);
}

function loadPuppeteer() {
  if (process.env.ZEQ_NO_BROWSER === "1") skip("ZEQ_NO_BROWSER is set");
  if (!existsSync(chromium)) skip(`there is no ${chromium}; ./run test installs it`);
  try {
    return createRequire(resolve(buildDir, "here"))("puppeteer-core");
  } catch (error) {
    if (error.code !== "MODULE_NOT_FOUND") throw error;
    return skip("the npm package puppeteer-core is not there; ./run test installs it");
  }
}

const puppeteer = loadPuppeteer();
/** A file of the test. */
export const path = (name) => join(resolve(workDir), name);
let browser;

/** Runs a program, which must succeed. */
export function run(...words) {
  const { status, stderr } = spawnSync(words[0], words.slice(1), {
    encoding: "utf8",
    env: { ...process.env, ASAN_OPTIONS: "detect_leaks=0" },
  });
  if (status === 3 && words[2] === "view" && /without the page/.test(stderr)) skip("zeq was built without the page");
  assert.equal(status, 0, `${words.join(" ")}: ${stderr}`);
}

before(async () => {
  rmSync(workDir, { recursive: true, force: true });
  mkdirSync(path("tmp"), { recursive: true });
  run(zeqSamples, path("samples"));
  for (const name of ["bench_vise", "bracket_pmi"])
    run(zeq, "-q", "view", path(`samples/${name}.stp`), "-o", path(`${name}.html`));
  browser = await puppeteer.launch({
    executablePath: chromium,
    pipe: true, // it ends with this process, whatever that dies of
    userDataDir: path("profile"),
    env: { ...process.env, TMPDIR: path("tmp") },
    args: [
      "--no-sandbox",
      "--use-gl=angle",
      "--use-angle=swiftshader",
      "--enable-unsafe-swiftshader",
      "--ignore-gpu-blocklist",
      "--hide-scrollbars",
    ],
  });
});

after(() => browser?.close());

export const blankPage = () => browser.newPage();

/** Opens a page from disk; close() fails if it has complained of something or asked for anything. */
export async function open(file, { phone = false, small = false, theme = "light" } = {}) {
  for (const left of (await browser.pages()).slice(1)) await left.close(); // by a test that has failed
  const page = await browser.newPage();
  page.setDefaultTimeout(120_000);
  const faults = [];
  page.on("console", (message) => faults.push(message.text()));
  page.on("pageerror", (error) => faults.push(error.message));
  page.on("request", (request) => request.url() === `file://${path(file)}` || faults.push(`asks for ${request.url()}`));
  await page.setViewport(
    phone
      ? { width: 390, height: 844, hasTouch: true, isMobile: true }
      : small
        ? { width: 720, height: 400 }
        : { width: 1120, height: 640 },
  );
  await page.emulateMediaFeatures([
    { name: "prefers-reduced-motion", value: "reduce" },
    { name: "prefers-color-scheme", value: theme },
  ]);
  await page.goto(`file://${path(file)}`);
  await page.waitForFunction(() => globalThis.viewer?.stage.frames > 0 || document.querySelector(".failed"));
  const text = (selector) => page.$eval(selector, (element) => element.textContent.replaceAll("\u00a0", " "));
  const close = async () => {
    await page.close();
    assert.deepEqual(faults, []);
  };
  /** Lets what was changed be drawn. */
  const settle = () =>
    page.evaluate(() => new Promise((done) => requestAnimationFrame(() => requestAnimationFrame(done))));
  /** Where on the page a point of the file is, in millimetres. */
  const at = (...point) =>
    page.evaluate((p) => viewer.app.toPage([p[0], p[2], -p[1]].map((each) => each / 1000)), point);
  const click = async (...point) => {
    await settle();
    await page.mouse.click(...(await at(...point)));
  };
  const camera = () => page.evaluate(() => viewer.session.camera);
  const press = async (...keys) => {
    for (const key of keys) await page.keyboard.press(key);
  };
  const command = (name) => page.click(`[data-command=${name}]`);
  return { page, text, close, settle, at, click, camera, press, command, faults };
}

/** How many colours there are within a few pixels of a place of the page. */
export async function tonesAround(page, x, y) {
  const shot = await page.screenshot({
    encoding: "base64",
    clip: { x: Math.round(x) - 10, y: Math.round(y) - 10, width: 20, height: 20 },
  });
  return page.evaluate(async (source) => {
    const bitmap = await createImageBitmap(new Blob([Uint8Array.from(atob(source), (each) => each.charCodeAt(0))]));
    const context = new OffscreenCanvas(20, 20).getContext("2d");
    context.drawImage(bitmap, 0, 0);
    return new Set(new Uint32Array(context.getImageData(0, 0, 20, 20).data.buffer)).size;
  }, shot);
}
