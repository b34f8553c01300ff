// Checks the schema that zeq prints, by a validator of others: it takes every document that the case files say
// is written, knows the order of their members and those that are always there, and refuses what the linter
// complains of, in the same places.
// usage: node validate.mjs ZEQ BUILD_DIR DATA_DIR; 127 is the exit code when there is no validator.
import { spawnSync } from "node:child_process";
import { readFileSync, readdirSync } from "node:fs";
import { createRequire } from "node:module";
import { join, resolve } from "node:path";

const [zeq, buildDir, dataDir] = process.argv.slice(2);

/// Whether the schema takes what it judges by other rules than the linter.
const judgedOtherwise = new Map([
  ["an integer literal is no floating-point number", true], // to JSON Schema, 1 and 1.0 are the same
  ["options that nobody reads", true], // where no class is chosen, anything may stand
  ["a shared buffer that is not there", true],
  ["a document of no kind", false], // the linter has no class to compare it with
]);

const failures = [];
function expect(holds, message) {
  if (!holds) failures.push(message);
}

function loadValidator() {
  try {
    return createRequire(resolve(buildDir, "here"))("ajv/dist/2020.js").default;
  } catch (error) {
    if (error.code !== "MODULE_NOT_FOUND") throw error;
    console.log("skipped: the npm package ajv is not there; ./run test installs it");
    process.exit(127);
  }
}

function runZeq(...words) {
  return spawnSync(zeq, words, { encoding: "utf8", maxBuffer: 1 << 26 });
}

function schemaOf(...words) {
  const { status, stdout, stderr } = runZeq("schema", ...words);
  if (status !== 0) throw new Error(`zeq schema ${words} ends with ${status}: ${stderr}`);
  return JSON.parse(stdout);
}

/// Rows of all case files, with where they stand.
function* rows() {
  const cases = readdirSync(join(dataDir, "cases")).map((name) => join("cases", name));
  for (const file of [...cases, "lint.jsonl"])
    for (const [index, line] of readFileSync(join(dataDir, file), "utf8").split("\n").entries())
      if (line) yield { where: `${file}:${index + 1}`, ...JSON.parse(line) };
}

const ajv = new (loadValidator())({ allErrors: true, strict: true, strictTypes: false });
const all = schemaOf();
const validateAny = ajv.compile(all);

/// The angle brackets of a class template's arguments are none of a URI's characters.
function pointerTo(name) {
  return `#/$defs/${encodeURI(name)}`;
}

/// The schema of a class has the definitions that it needs, those of the whole schema, and no others.
function validatorOf(name) {
  const schema = schemaOf(name);
  const text = JSON.stringify(schema);
  expect(schema.$ref === pointerTo(name), `the schema of ${name} is that of ${schema.$ref}`);
  for (const [key, definition] of Object.entries(schema.$defs)) {
    const isSame = JSON.stringify(definition) === JSON.stringify(all.$defs[key]);
    expect(isSame, `${key} is defined otherwise for ${name} than for all`);
    expect(text.includes(`"${pointerTo(key)}"`), `the schema of ${name} defines ${key} and does not need it`);
  }
  return ajv.compile(schema);
}

const classes = Object.keys(all.$defs).filter((name) => !("enum" in all.$defs[name]));
const validators = new Map(classes.map((name) => [name, validatorOf(name)]));
const withoutDocument = new Set(classes);
const inAll = new Map(); // by class: the members that every written object has
let accepted = 0;
let refused = 0;

function shown(errors) {
  return errors.map((error) => `\n  ${error.instancePath} ${error.message}`).join("");
}

/// The part of a definition that is about an object; nothing for a class that is none.
function objectOf(definition) {
  return [definition, ...(definition.anyOf ?? [])].find((each) => each.properties);
}

/// The members of a written object in their order; notes those that all objects of the class have.
function checkMembers(where, name, document) {
  const object = objectOf(all.$defs[name]);
  if (!object || document === null) return;
  const keys = Object.keys(document);
  const order = Object.keys(object.properties).filter((key) => keys.includes(key));
  expect(`${keys}` === `${order}`, `${where}: the order is ${keys}`);
  inAll.set(name, (inAll.get(name) ?? keys).filter((key) => keys.includes(key)));
}

function checkAlwaysWritten(name, keys) {
  const { properties, $comment } = objectOf(all.$defs[name]);
  const some = /Always written: (.*)\.$/.exec($comment)?.[1] ?? "";
  const always = $comment.endsWith("All are always written.") ? Object.keys(properties).join(", ") : some;
  expect(keys.join(", ") === always, `${name}: always written are ${keys}, and not ${always}`);
}

function checkWritten({ where, class: name, read, written = read }) {
  const validate = validators.get(name);
  if (!validate) return expect(false, `${where}: the schema has no class ${name}`);
  withoutDocument.delete(name);
  ++accepted;
  expect(validate(written), `${where}: a written document is refused:${shown(validate.errors ?? [])}`);
  if (all.anyOf.some((whole) => whole.$ref.endsWith(`/${name}`)))
    expect(validateAny(written), `${where}: ${name} is none of the whole documents`);
  checkMembers(where, name, written);
}

/// The pointer of what an error is about; a member too many is reported where it stands.
function placeOf({ keyword, instancePath, params }) {
  if (keyword !== "additionalProperties") return instancePath;
  return `${instancePath}/${params.additionalProperty.replace(/~/g, "~0").replace(/\//g, "~1")}`;
}

function checkLinted({ where, case: claim, class: name, read, findings }) {
  const validate = name ? validators.get(name) : validateAny;
  const complaints = findings.filter(([severity]) => severity !== "note");
  const expected = judgedOtherwise.get(claim) ?? complaints.length === 0;
  const isValid = validate(read);
  expect(isValid === expected, `${where}: is ${expected ? "refused" : "taken"}:${shown(validate.errors ?? [])}`);
  if (isValid || expected) return;
  ++refused;
  for (const [, pointer, text] of complaints) {
    if (text.startsWith("the member appears again")) continue; // which a parsed document does not tell
    const missing = /^the member '(.*)' is missing/.exec(text)?.[1];
    const isSame = (error) => placeOf(error) === pointer && error.params.missingProperty === missing;
    expect(validate.errors.some(isSame), `${where}: no error at '${pointer}':${shown(validate.errors)}`);
  }
}

for (const row of rows())
  if (row.findings) checkLinted(row);
  else if (row.class) checkWritten(row);
for (const [name, keys] of inAll) checkAlwaysWritten(name, keys);
for (const name of withoutDocument) expect(false, `no case file has a written ${name}`);

const report = schemaOf("--json");
expect(JSON.stringify(report.documents) === JSON.stringify([all]), "--json does not report the schema");
const unknown = runZeq("schema", "Comand");
expect(unknown.status === 2 && unknown.stdout === "", "an unknown class is not refused");
expect(/'Comand'; did you mean 'Command'\? There are Command, .*Result/.test(unknown.stderr), unknown.stderr);

console.log(`${classes.length} classes: ${accepted} documents are taken, ${refused} are refused`);
if (accepted === 0 || refused === 0) failures.push("the case files were not found");
for (const failure of failures) console.log(failure);
process.exit(failures.length === 0 ? 0 : 1);
