// Has zeq gltf write the samples and other models, and asks the validator of the Khronos Group what is wrong with the
// files: nothing.
// usage: node validate.mjs ZEQ ZEQ_SAMPLES BUILD_DIR WORK_DIR MODELS...; 127 is the exit code when there is no validator.
import { spawnSync } from "node:child_process";
import { mkdirSync, readFileSync, readdirSync, rmSync, statSync } from "node:fs";
import { createRequire } from "node:module";
import { basename, join, resolve } from "node:path";

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

const validator = loadValidator();
rmSync(workDir, { recursive: true, force: true });
mkdirSync(workDir, { recursive: true });
const samples = join(workDir, "samples");
const env = { ...process.env, ASAN_OPTIONS: "detect_leaks=0" }; // the CAD kernel frees nothing at the end
if (spawnSync(zeqSamples, [samples], { env }).status !== 0) throw new Error("zeq_samples writes no samples");
let faults = 0;
let checked = 0;
const jobs = [samples, ...models].flatMap(filesOf).map((model) => ({ model, options: [] }));
jobs.push({ model: join(samples, "bench_vise.stp"), options: ["--compress"] });
for (const { model, options } of jobs) {
  const glb = join(workDir, basename(model) + options.join("") + ".glb");
  const run = spawnSync(zeq, ["-q", "--output", glb, "gltf", model, ...options], { encoding: "utf8" });
  if (run.status !== 0) {
    console.log(`${model}: zeq ends with ${run.status}: ${run.stderr}`);
    ++faults;
    continue;
  }
  const { issues, info } = await validator.validateBytes(new Uint8Array(readFileSync(glb)), { maxIssues: 20 });
  console.log(`${basename(glb)}: ${info.drawCallCount} draw calls, ${info.totalTriangleCount} triangles`);
  for (const { severity, code, message, pointer } of issues.messages.filter((each) => each.severity < 2))
    console.log(`${basename(glb)}: ${severity === 0 ? "error" : "warning"} ${code} at ${pointer}: ${message}`);
  faults += issues.numErrors + issues.numWarnings + (info.totalTriangleCount === 0 ? 1 : 0);
  ++checked;
}
if (checked === 0) throw new Error("there is no model to check");
process.exit(faults === 0 ? 0 : 1);
