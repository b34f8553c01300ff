// How the page and the scripts of the tests are linted: ./run lint
import { createRequire } from "node:module";
import { join } from "node:path";

const require = createRequire(join(process.cwd(), "build/here")); // where ./run installs the packages
const js = require("@eslint/js");
const globals = require("globals");

export default [
  { ignores: ["**/node_modules/"] },
  js.configs.recommended,
  {
    languageOptions: { ecmaVersion: 2022, sourceType: "module" },
    rules: {
      eqeqeq: "error",
      "no-var": "error",
      "prefer-const": "error",
      "max-lines": ["error", 500],
      "max-len": ["error", { code: 135 }],
    },
  },
  { files: ["mcad/tools/viewer/src/**"], languageOptions: { globals: globals.browser } },
  { files: ["**/*.mjs"], languageOptions: { globals: globals.node } },
  {
    files: ["mcad/test/viewer/browser*.mjs"],
    languageOptions: { globals: { ...globals.node, ...globals.browser, viewer: "readonly" } },
  },
];
