// Bundles the page into one HTML file with script and style inlined: node build.mjs OUT
// The npm packages are looked for beside this file and where ./run installs them, below build/viewer.
import { existsSync, readFileSync, writeFileSync } from "node:fs";
import { createRequire } from "node:module";
import { dirname, join } from "node:path";
import { fileURLToPath } from "node:url";

const here = dirname(fileURLToPath(import.meta.url));
const places = [here, join(here, "../../../build/viewer")];
const home = places.find((each) => existsSync(join(each, "node_modules/esbuild")));
const out = process.argv[2];
if (!out || !home) {
  console.error(out ? `build.mjs: no npm packages in ${places.join(" or ")}` : "usage: node build.mjs OUT");
  process.exit(1);
}
const esbuild = createRequire(join(home, "here"))("esbuild");

/** Bundles one file into a text that can stand in an HTML element. */
async function bundle(file) {
  const result = await esbuild.build({
    absWorkingDir: here,
    bundle: true,
    charset: "utf8",
    entryPoints: [join(here, file)],
    format: "iife",
    legalComments: "eof", // the licence of three.js goes with it
    minify: true,
    nodePaths: [join(home, "node_modules")],
    target: "es2022",
    write: false,
  });
  // What would end the element, as text in a script or a style.
  return result.outputFiles[0].text.replace(/<\/(?=script|style)|<!--/gi, (found) => `\\x3c${found.slice(1)}`);
}

const [script, style] = await Promise.all([bundle("src/main.js"), bundle("style.css")]);
const page = readFileSync(join(here, "index.html"), "utf8")
  .replace("/* style */", () => style)
  .replace("/* script */", () => script);
const markers = page.split("<!-- model -->").length - 1;
if (markers !== 1) throw new Error(`the page holds the mark of the model ${markers} times`);
writeFileSync(out, page);
