// Pages that zeq view writes, in Debian's Chromium, used as people use them: by clicks, fingers and keys.
// usage: node browser.test.mjs ZEQ ZEQ_SAMPLES BUILD_DIR WORK_DIR; 127 is the exit code when something is missing.
import assert from "node:assert/strict";
import { readFileSync, writeFileSync } from "node:fs";
import { test } from "node:test";
import { blankPage, open, path, run, tonesAround, zeq } from "./browser_page.mjs";
import { cubes, elements } from "./sample.mjs";

test("faces and parts are picked, told and read out", async () => {
  const { page, text, close, click, press } = await open("bracket_pmi.html");
  await press("7", "p"); // from below, where nothing is before it
  await click(5, 5, 0);
  const details = await text("#details");
  assert.match(details, /face 364plane.*Area.*mm².*Normal−z/s);
  assert.match(details, /AnnotationsA.* \| 0\.05/s);
  assert.match(await text("#spoken"), /^Face 364, plane, of /);
  await page.click("#details .link:nth-child(1)"); // to what applies to it
  assert.match(await text("#details"), /Applies to.*face 364, plane/s);
  assert.match(await text("#spoken"), /^Annotation A, datum/);
  await page.click("#details .link:nth-child(1)"); // and back
  assert.match(await text("#spoken"), /^Face 364/);
  await page.mouse.click(310, 600); // beside the model
  assert.equal(await page.$eval("#details", (each) => each.hidden), true);
  await close();
});

test("the exact radius is told of holes", async () => {
  const { text, close, click, press, page } = await open("bracket_pmi.html");
  await press("p", "1"); // the large hole goes through the upright plate along y
  const { center, radius } = await page.evaluate(() => viewer.session.facts.of(1, "face", "960"));
  await click(center[0] - radius * Math.cos(0.3), 43, center[2] - radius * Math.sin(0.3));
  assert.match(await text("#details"), /face 960cylinder.*Radius8 mm.*Diameter16 mm/s);
  await close();
});

test("the tree follows ARIA's keys, searches, hides, isolates and shows all", async () => {
  const { page, text, close, press, command } = await open("bench_vise.html");
  const names = () => page.$$eval("#tree .name", (rows) => rows.map((each) => each.textContent));
  const hidden = () => page.$$eval("#tree .none .name", (rows) => rows.map((each) => each.textContent));
  assert.deepEqual(await hidden(), ["Transport lock"]);
  await page.focus("#tree");
  await press("ArrowDown", "ArrowDown", "ArrowDown", "ArrowRight");
  assert.equal((await names()).indexOf("Slide"), 4);
  await press("ArrowRight", "Enter");
  assert.match(await text("#spoken"), /^Part Slide/);
  const active = await page.$eval(
    "#tree",
    (tree) => document.getElementById(tree.getAttribute("aria-activedescendant")).outerHTML,
  );
  assert.match(active, /aria-level="3".*aria-posinset="1".*aria-setsize="4".*aria-selected="true"/);
  await press("h");
  assert.deepEqual(await hidden(), ["Slide", "Transport lock"]);
  await press("i");
  assert.equal(await page.evaluate(() => viewer.session.shown.reduce((a, b) => a + b)), 1);
  await command("all");
  assert.deepEqual(await hidden(), []);
  await page.click("#tree .row:nth-child(2) button");
  assert.deepEqual(await hidden(), ["Base"]);
  await press("ArrowLeft", "ArrowLeft");
  await press("/");
  await page.keyboard.type("bolt");
  const found = await names();
  assert.ok(found.includes("Fastener 1") && !found.includes("Base"), found.join());
  await page.click("#tree .row:nth-child(2) .name");
  await page.click("#details .actions button:nth-child(2)");
  assert.equal(
    await page.evaluate(() =>
      viewer.session.isShown(viewer.session.model.instances.find(({ name }) => name === "Base")),
    ),
    false,
  );
  await close();
});

test("annotations are listed, picked on the model, and shown by saved views alone", async () => {
  const { page, text, close, press, settle, camera, command } = await open("bracket_pmi.html");
  assert.equal(await page.$$eval("#annotations .row", (rows) => rows.length), 11);
  await page.click("#annotations .row:nth-child(7)");
  assert.match(await text("#details"), /16 H7.*face 960, cylinder/s);
  const calls = () => page.evaluate(() => viewer.stage.statistics.calls);
  await settle();
  const all = await calls();
  await page.click("#panel-pmi .chip:nth-child(3)");
  await settle();
  const { view, section } = await page.evaluate(() => ({
    view: viewer.session.view.name,
    section: viewer.session.section?.axis,
  }));
  assert.deepEqual([view, section], ["SECTION FROM ABOVE", "view"]);
  assert.ok((await page.$$eval("#annotations .row", (rows) => rows.length)) < 11);
  await page.click("#panel-pmi .chip:nth-child(2)"); // FRONT
  await settle();
  const { back, height } = await camera();
  assert.ok(Math.abs(back[2] - 1) < 1e-6 && Math.abs(height - 0.12) < 1e-6, `${back} ${height}`);
  assert.equal(await page.evaluate(() => viewer.session.section), null);
  const stroke = await page.evaluate(() => {
    const { model } = viewer.session;
    const annotation = model.annotations.find(({ name }) => name === "datum feature C");
    const line = model.meshes[annotation.mesh].find(({ mode }) => mode === "lines");
    return viewer.app.toPage(
      [0, 1, 2].map(
        (k) =>
          annotation.world[12 + k] +
          [0, 4, 8].reduce((sum, c, n) => sum + annotation.world[c + k] * line.positions[n], 0),
      ),
    );
  });
  await press("Escape");
  await page.mouse.click(...stroke);
  assert.match(await text("#spoken"), /^Annotation C, datum/);
  await page.click("#panel-pmi .chip:nth-child(1)");
  await press("Escape");
  await command("pmi");
  await settle();
  assert.ok((await calls()) < all - 20, "annotations are still drawn");
  await close();
});

test("a section is put across each axis, moved, turned round and closed by caps", async () => {
  const { page, text, close, settle, command, press } = await open("bench_vise.html");
  const calls = () => page.evaluate(() => viewer.stage.statistics.calls);
  await command("section");
  for (const [axis, name] of ["x", "y", "z"].entries()) {
    await page.click(`#section-bar .chip:nth-child(${axis + 1})`);
    assert.match(await text("#section-bar output"), new RegExp(`^${name} = `));
    assert.ok(Math.abs(await page.evaluate((k) => viewer.session.section.normal[[0, 2, 1][k]], axis)) > 0.999);
  }
  await settle();
  const capped = await calls();
  await page.click("#section-caps");
  await settle();
  assert.ok((await calls()) < capped, "caps are still drawn");
  await page.click("#section-caps");
  const before = await text("#section-bar output");
  await page.focus("#section-at");
  await press("ArrowRight", "ArrowRight");
  assert.notEqual(await text("#section-bar output"), before);
  // Above the cut there is nothing, below it the cap of the base, which belongs to the part.
  await press("6");
  await page.$eval("#section-at", (slider) => {
    const { low, high } = viewer.session.partsBox;
    slider.value = ((0.01 - low[1]) / (high[1] - low[1])) * 1000;
    slider.dispatchEvent(new Event("input"));
  });
  const at = await page.evaluate(() => viewer.app.toPage([0.05, 0.01, 0.03]));
  await settle();
  await page.mouse.click(...at);
  assert.match(await text("#spoken"), /^Part Base/);
  await press("Escape");
  const tones = await tonesAround(page, ...at); // hatched, where the floor that would be seen without a cap is plain
  assert.ok(tones > 8, `the cap has ${tones} tones`);
  await page.click("#section-bar [aria-label='Other side']");
  assert.ok((await page.evaluate(() => viewer.session.section.normal[1])) < -0.999);
  await press("x");
  assert.equal(await page.$eval("#section-bar", (each) => each.hidden), true);
  await close();
});

test("distances and angles are measured between vertices, edges and faces", async () => {
  const { page, text, close, click, press, at } = await open("bracket_pmi.html");
  await press("p", "m", "1");
  const rows = async () =>
    Object.fromEntries(
      await page.$$eval("#measured dt", (list) =>
        list.map((dt) => [dt.textContent, dt.nextSibling.textContent.replaceAll("\u00a0", " ")]),
      ),
    );
  const { hole } = await page.evaluate(() => ({ hole: viewer.session.facts.of(1, "face", "960") }));
  await click(0, 0, 10); // two vertices of the base plate, 80 x 50 x 10
  assert.equal((await rows()).X, "0 mm");
  await click(80, 0, 10);
  assert.deepEqual(await rows(), {
    From: "vertex",
    To: "vertex",
    Distance: "80 mm",
    Δx: "80 mm",
    Δy: "0 mm",
    Δz: "0 mm",
  });
  await click(40, 0, 10); // an edge, then the upright face
  assert.equal((await rows()).Length, "80 mm");
  await click(20, 40, 40);
  assert.deepEqual([(await rows()).Distance, (await rows()).Angle], ["40 mm", "0°"]);
  await click(60, 3, 10); // two faces at a right angle
  await click(20, 40, 40);
  assert.equal((await rows()).Angle, "90°");
  assert.match(await text("#measured"), /Between the picked points/);
  await page.click("#measure-bar [aria-label='Begin anew']");
  await click(hole.center[0] - hole.radius * Math.SQRT1_2, 40, hole.center[2] + hole.radius * Math.SQRT1_2); // the rim of the hole
  assert.equal((await rows()).Radius, "8 mm");
  await click(60, 3, 10);
  assert.deepEqual(await rows(), {
    From: "centre of circle",
    To: "plane",
    Distance: "22 mm",
    Δx: "0 mm",
    Δy: "0 mm",
    Δz: "-22 mm",
  });
  assert.ok((await at(0, 0, 0)).length === 2);
  await press("Escape");
  assert.equal(await page.$eval("#measure-bar", (each) => each.hidden), true);
  await close();
});

test("views, projection, edges and theme switch by button and by key; keys turn, move and zoom", async () => {
  const { page, close, press, camera, command, settle } = await open("bench_vise.html");
  const backs = {
    front: [0, 0, 1],
    back: [0, 0, -1],
    left: [-1, 0, 0],
    right: [1, 0, 0],
    top: [0, 1, 0],
    bottom: [0, -1, 0],
  };
  for (const [i, name] of ["iso", "front", "back", "left", "right", "top", "bottom"].entries()) {
    const expected = backs[name] ?? [1, 0.9, 1.2].map((each) => each / Math.hypot(1, 0.9, 1.2));
    for (const go of [() => command(name), () => press(String(i + 1))]) {
      await press("3");
      await go();
      const { back } = await camera();
      assert.ok(Math.hypot(...back.map((each, k) => each - expected[k])) < 1e-6, `${name}: ${back}`);
    }
  }
  const calls = async () => (await settle(), page.evaluate(() => viewer.stage.statistics.calls));
  const withEdges = await calls();
  await command("edges");
  assert.ok((await calls()) < withEdges);
  await press("e");
  assert.equal(await calls(), withEdges);
  await command("perspective");
  assert.equal((await camera()).isPerspective, true);
  await press("o");
  await press("1");
  await page.focus("canvas");
  for (const [keys, changed] of [
    [["ArrowLeft"], "back"],
    [["ArrowUp"], "back"],
    [["+"], "height"],
    [["-", "-"], "height"],
  ]) {
    const was = await camera();
    await press(...keys);
    assert.notDeepEqual((await camera())[changed], was[changed], keys.join());
  }
  const { target } = await camera();
  await page.keyboard.down("Shift");
  await press("ArrowRight");
  await page.keyboard.up("Shift");
  assert.notDeepEqual((await camera()).target, target);
  await command("fit");
  await page.focus("canvas");
  await press("1", "Enter");
  assert.match(await page.$eval("#spoken", (each) => each.textContent), /^Face /);
  const theme = () => page.evaluate(() => document.documentElement.dataset.theme);
  await command("theme");
  assert.equal(await theme(), "dark");
  await press("t");
  await page.emulateMediaFeatures([{ name: "prefers-color-scheme", value: "light" }]);
  assert.equal(await theme(), "light");
  await press("?");
  assert.equal(await page.$eval("dialog", (each) => each.open), true);
  await page.click("dialog button");
  await page.click("#tab-report");
  assert.match(await page.$eval("#panel-report", (each) => each.textContent), /In the file.*faces.*\d/s);
  await close();
});

test("the mouse turns, moves and zooms, and nothing is drawn when nothing changes", async () => {
  const { page, close, camera } = await open("bench_vise.html");
  const drag = async (button) => {
    await page.mouse.move(700, 400);
    await page.mouse.down({ button });
    await page.mouse.move(780, 430, { steps: 4 });
    await page.mouse.up({ button });
  };
  const first = await camera();
  await drag("left");
  const turned = await camera();
  assert.notDeepEqual(turned.back, first.back);
  assert.deepEqual(turned.target, first.target);
  await drag("right");
  assert.notDeepEqual((await camera()).target, turned.target);
  await page.mouse.wheel({ deltaY: -300 });
  await page.waitForFunction((height) => viewer.session.camera.height < height, {}, turned.height);
  assert.equal(await page.$eval("#details", (each) => each.hidden), true);
  await new Promise((done) => setTimeout(done, 300));
  const frames = () => page.evaluate(() => viewer.stage.frames);
  const still = await frames();
  await new Promise((done) => setTimeout(done, 400));
  assert.equal(await frames(), still);
  await close();
});

test("on a phone fingers pick, turn and pinch, and the panel is a sheet", async () => {
  const { page, text, close, camera, settle } = await open("bench_vise.html", { phone: true, theme: "dark" });
  assert.equal(await page.$eval("#panel-parts", (each) => getComputedStyle(each).display), "none");
  const first = await camera();
  await page.touchscreen.tap(...(await page.evaluate(() => viewer.app.toPage([0.1, 0.008, 0.055]))));
  assert.match(await text("#spoken"), /^Face .* of Base/);
  await page.tap("#details [aria-label=Close]");
  const finger = await page.touchscreen.touchStart(150, 600);
  await finger.move(220, 610);
  await page.waitForFunction((back) => viewer.session.camera.back.join() !== back, {}, first.back.join());
  const other = await page.touchscreen.touchStart(160, 640);
  await other.move(100, 740);
  await page.waitForFunction((height) => viewer.session.camera.height < height, {}, first.height);
  await other.end();
  await finger.end();
  await page.tap("#tab-report");
  await settle();
  assert.ok((await page.$eval("#panel-report", (each) => each.getBoundingClientRect().height)) > 300);
  const wide = await page.evaluate(() => document.documentElement.scrollWidth);
  assert.equal(wide, 390);
  await page.tap("#tab-report");
  assert.equal(await page.$eval("#panel-report", (each) => getComputedStyle(each).display), "none");
  await close();
});

test("every control has a name, and shows the focus", async () => {
  const { page, close, press, click } = await open("bracket_pmi.html");
  await press("x", "m");
  await click(40, 0, 10);
  const unnamed = [];
  let controls = 0;
  const walk = (node) => {
    if (
      /^(button|checkbox|slider|searchbox|tree|treeitem|listbox|option|tab|application|toolbar|tabpanel)$/.test(
        node.role,
      )
    ) {
      ++controls;
      if (!node.name) unnamed.push(node);
    }
    (node.children ?? []).forEach(walk);
  };
  walk(await page.accessibility.snapshot({ interestingOnly: false }));
  assert.deepEqual(unnamed, []);
  assert.ok(controls > 40, `only ${controls}`);
  await page.focus("#tab-pmi");
  const seen = new Set();
  for (let i = 0; i < 60; ++i) {
    await press("Tab");
    const { id, outline } = await page.evaluate(() => {
      const element = document.activeElement;
      return {
        id: element.id || element.dataset.command || element.getAttribute("aria-label") || element.textContent,
        outline: getComputedStyle(element).outlineStyle,
      };
    });
    if (!id || id === "") continue;
    if (seen.has(id)) break;
    seen.add(id);
    if (await page.evaluate(() => document.activeElement !== document.body)) assert.notEqual(outline, "none", id);
  }
  for (const id of ["annotations", "canvas", "section-at", "fit"])
    assert.ok(seen.has(id), `${id} is not reached: ${[...seen]}`);
  await close();
});

test("the model looks as in the picture that zeq makes", async () => {
  run(
    zeq,
    "-q",
    "picture",
    path("samples/bench_vise.stp"),
    "--view",
    "iso",
    "--transparent",
    "--size",
    "820x596",
    "-o",
    path("vise.png"),
  );
  const { page, close, settle, press } = await open("bench_vise.html");
  await press("1");
  await page.addStyleTag({
    content: "body, #view { background: none !important } #views, header, #side { visibility: hidden }",
  });
  await settle();
  const shot = await page.screenshot({ omitBackground: true, encoding: "base64" });
  const picture = readFileSync(path("vise.png")).toString("base64");
  await close();
  const bare = await blankPage();
  const overlap = await bare.evaluate(
    async (...sources) => {
      const size = 300;
      const [a, b] = await Promise.all(
        sources.map(async (source) => {
          const image = new Image();
          image.src = `data:image/png;base64,${source}`;
          await image.decode();
          const draw = (width, height, ...area) => {
            const canvas = Object.assign(document.createElement("canvas"), { width, height });
            const context = canvas.getContext("2d");
            context.drawImage(image, ...area, 0, 0, width, height);
            return context.getImageData(0, 0, width, height).data;
          };
          const { width, height } = image;
          const all = draw(width, height, 0, 0, width, height);
          const [xs, ys] = [[], []];
          for (let i = 3; i < all.length; i += 4)
            if (all[i] > 100) (xs.push(((i - 3) / 4) % width), ys.push(Math.floor((i - 3) / 4 / width)));
          const range = (list) =>
            list.reduce(([low, high], each) => [Math.min(low, each), Math.max(high, each)], [Infinity, -Infinity]);
          const [[left, right], [top, bottom]] = [range(xs), range(ys)];
          const mask = draw(size, size, left, top, right - left + 1, bottom - top + 1)
            .filter((_, i) => i % 4 === 3)
            .map((each) => each > 100);
          return { mask, aspect: (right - left) / (bottom - top) };
        }),
      );
      let [both, either] = [0, 0];
      a.mask.forEach((each, i) => {
        both += each && b.mask[i] ? 1 : 0;
        either += each || b.mask[i] ? 1 : 0;
      });
      return { ratio: both / either, aspects: a.aspect / b.aspect };
    },
    shot,
    picture,
  );
  await bare.close();
  console.log(`silhouettes overlap by ${overlap.ratio.toFixed(4)}`);
  assert.ok(overlap.ratio > 0.98 && Math.abs(overlap.aspects - 1) < 0.02, JSON.stringify(overlap));
});

test("ten thousand instances are two draw calls, listed and turned", async () => {
  const shell = readFileSync(path("bracket_pmi.html"), "utf8").replace(
    /<script type="text\/plain" id="model">[^]*?id="facts">[^]*?<\/script>/,
    "<!-- model -->",
  );
  const places = Array.from({ length: 10_000 }, (_, i) => [i % 100, Math.floor(i / 100), 0].map((each) => each * 0.02));
  writeFileSync(
    path("many.html"),
    shell.replace("<!-- model -->", () => elements(cubes(places), { version: 1, file: "many <b>cubes</b>.stp" })),
  );
  const { page, text, close, settle, press } = await open("many.html", { small: true });
  await settle();
  assert.deepEqual(await page.evaluate(() => viewer.stage.statistics.calls), 2);
  assert.equal(await text("h1"), "many <b>cubes</b>.stp");
  assert.ok((await page.$$eval("#tree .row", (rows) => rows.length)) < 100);
  await page.focus("#tree");
  await press("End", "Enter");
  assert.match(await text("#spoken"), /^Part Cube 10000/);
  await page.focus("canvas");
  await press("e", "6", "Enter");
  await settle();
  assert.equal(
    await page.evaluate(() => viewer.stage.statistics.calls),
    (await text("#spoken")).startsWith("Face") ? 2 : 1,
  );
  await close();
});

test("what is wrong is told in the page", async () => {
  const page = readFileSync(path("bracket_pmi.html"), "utf8");
  const cases = {
    "empty.html": [page.replace(/id="model">[^<]*/, 'id="model">'), /holds no model/],
    "damaged.html": [page.replace(/id="model">.{400}/, 'id="model">'), /model in this page is damaged/],
    "no_gl.html": [
      page.replace("<head>", "<head><script>HTMLCanvasElement.prototype.getContext = () => null</script>"),
      /WebGL is switched off/,
    ],
  };
  for (const [file, [content, message]] of Object.entries(cases)) {
    writeFileSync(path(file), content);
    const { page: opened, text, faults } = await open(file);
    assert.match(await text(".failed"), message);
    assert.ok(faults.length > 0);
    await opened.close();
  }
});
