// Has zeq gltf write the samples and other models, and asks the validator of the Khronos Group what is wrong with the
// files: nothing.
// usage: node validate.mjs ZEQ ZEQ_SAMPLES BUILD_DIR WORK_DIR MODELS...; 127 is the exit code when there is no validator.
import { spawnSync } from "node:child_process";
import { mkdirSync, readFileSync, readdirSync, rmSync, statSync } from "node:fs";
import { createRequire } from "node:module";
import { basename, join, resolve } from "node:path";
import { gunzipSync } from "node:zlib";

const [zeq, zeqSamples, buildDir, workDir, ...models] = process.argv.slice(2);

function loadValidator() {
  try {
    return createRequire(resolve(buildDir, "here"))("gltf-validator");
  } catch (error) {
    if (error.code !== "MODULE_NOT_FOUND") throw error;
    console.log("skipped: the npm package gltf-validator is not there; ./run test installs it");
    process.exit(127);
  }
}

/// A model stands for itself, a directory for all models in it.
function filesOf(path) {
  if (!statSync(path).isDirectory()) return [path];
  return readdirSync(path).filter((name) => /\.(stp|igs)$/.test(name)).map((name) => join(path, name));
}

function modelIn(page) {
  return gunzipSync(Buffer.from(/id="model">([^<]*)</.exec(page)[1], "base64"));
}

const validator = loadValidator();
rmSync(workDir, { recursive: true, force: true });
mkdirSync(workDir, { recursive: true });
const samples = join(workDir, "samples");
const env = { ...process.env, ASAN_OPTIONS: "detect_leaks=0" }; // the CAD kernel frees nothing at the end
if (spawnSync(zeqSamples, [samples], { env }).status !== 0) throw new Error("zeq_samples writes no samples");
let faults = 0;
let checked = 0;
const jobs = [samples, ...models].flatMap(filesOf).map((model) => ({ model, action: ["gltf"] }));
jobs.push({ model: join(samples, "bench_vise.stp"), action: ["gltf", "--compress"] });
jobs.push(...filesOf(samples).map((model) => ({ model, action: ["view"] }))); // there is what is hidden, too
for (const { model, action } of jobs) {
  const out = join(workDir, [basename(model), ...action].join("."));
  const run = spawnSync(zeq, ["-q", "--output", out, ...action, model], { encoding: "utf8" });
  if (action[0] === "view" && run.stderr.includes("built without the page")) continue;
  if (run.status !== 0) {
    console.log(`${model}: zeq ends with ${run.status}: ${run.stderr}`);
    ++faults;
    continue;
  }
  const written = readFileSync(out);
  const glb = action[0] === "view" ? modelIn(written) : written;
  const { issues, info } = await validator.validateBytes(new Uint8Array(glb), { maxIssues: 20 });
  console.log(`${basename(out)}: ${info.drawCallCount} draw calls, ${info.totalTriangleCount} triangles`);
  for (const { severity, code, message, pointer } of issues.messages.filter((each) => each.severity < 2))
    console.log(`${basename(out)}: ${severity === 0 ? "error" : "warning"} ${code} at ${pointer}: ${message}`);
  faults += issues.numErrors + issues.numWarnings + (info.totalTriangleCount === 0 ? 1 : 0);
  ++checked;
}
if (checked === 0) throw new Error("there is no model to check");
process.exit(faults === 0 ? 0 : 1);
