// The page without a browser: reading, picking, measuring, cutting, the tree, the camera, colours.
import assert from "node:assert/strict";
import { test } from "node:test";
import { gzipSync } from "node:zlib";
import {
  between,
  fitted,
  firstCamera,
  panned,
  project,
  rayThrough,
  savedCamera,
  standardView,
  standardViews,
  turned,
  windowOf,
  withPerspective,
  zoomed,
} from "../../tools/viewer/src/camera.js";
import { contrast, fromHex, fromLinear, legible } from "../../tools/viewer/src/color.js";
import { unpack } from "../../tools/viewer/src/data.js";
import { Facts } from "../../tools/viewer/src/facts.js";
import { Gestures } from "../../tools/viewer/src/gestures.js";
import { readGlb } from "../../tools/viewer/src/glb.js";
import { measure, shapeOf } from "../../tools/viewer/src/measure.js";
import { boxOf, buildModel, findPieces, mainColor, rangeOf } from "../../tools/viewer/src/model.js";
import { nearestLine, nearestTriangle } from "../../tools/viewer/src/picking.js";
import {
  cutTriangles,
  isClosed,
  planeIn,
  planeOf,
  sectionAcross,
  sectionOfView,
} from "../../tools/viewer/src/section.js";
import { Session } from "../../tools/viewer/src/session.js";
import {
  cornersOf,
  cross,
  distance,
  dot,
  invert,
  multiply,
  placementOf,
  transformNormal,
  transformPoint,
} from "../../tools/viewer/src/space.js";
import { palettes } from "../../tools/viewer/src/theme.js";
import { Tree } from "../../tools/viewer/src/tree.js";
import { bufferOf, cubes, toGlb } from "./sample.mjs";

const modelOf = (glb) => buildModel(readGlb(bufferOf(glb)));
const near = (actual, expected, tolerance = 1e-7) =>
  [actual]
    .flat()
    .forEach((each, k) =>
      assert.ok(Math.abs(each - [expected].flat()[k]) <= tolerance, `${actual} is not ${expected}`),
    );
const two = () =>
  modelOf(
    cubes([
      [0, 0, 0],
      [0.03, 0, 0],
    ]),
  );

test("placements turn, combine and come back", () => {
  const turn = placementOf({ rotation: [-Math.SQRT1_2, 0, 0, Math.SQRT1_2], translation: [1, 2, 3], scale: [1, 2, 1] });
  near(transformPoint(turn, [0, 1, 1]), [1, 3, 1]);
  near(transformPoint(multiply(invert(turn), turn), [4, 5, 6]), [4, 5, 6]);
  near(transformNormal(placementOf({ scale: [1, 2, 1] }), [Math.SQRT1_2, Math.SQRT1_2, 0]), [
    2 / Math.sqrt(5),
    1 / Math.sqrt(5),
    0,
  ]);
  assert.equal(invert(placementOf({ scale: [1, 0, 1] })), null);
});

test("data elements are unpacked, and damaged ones are told", async () => {
  const text = gzipSync(Buffer.alloc(1_000_000, "model")).toString("base64");
  assert.equal((await unpack(`\n${text}\n`, "model")).byteLength, 1_000_000);
  for (const damaged of ["", "!!", text.slice(0, 100), Buffer.from("plain").toString("base64")])
    await assert.rejects(unpack(damaged, "model"), /The model in this page is damaged/);
});

test("damaged models are told", () => {
  const broken = (change) => cubes([[0, 0, 0]], change);
  const cases = [
    [Buffer.from("no model at all, just text"), /no binary glTF/],
    [cubes([[0, 0, 0]]).subarray(0, -4), /bytes and should have/],
    [toGlb({}).fill(9, 4, 5), /version 9/],
    [toGlb({}).fill(0x58, 16, 17), /no description/],
    [toGlb({ nodes: [] }), /no scene/],
    [broken((json) => (json.accessors[2].count = 4000)), /leaves its buffer/],
    [broken((json) => (json.accessors[0].count = 3)), /outside its vertices/],
    [broken((json) => (json.accessors[0].type = "VEC9")), /missing or of another kind/],
    [broken((json) => (json.bufferViews[0].byteStride = 16)), /not tight/],
    [broken((json) => (json.meshes[0].primitives[0].mode = 6)), /unknown kind, 6/],
    [broken((json) => (json.meshes[0].primitives[0].extras.triangles[0] = 99)), /more triangles/],
    [broken((json) => (json.nodes[1].children = [0])), /Node 0 of the model is contained twice/],
    [broken((json) => (json.nodes[0].children = [1, 7])), /no node 7/],
  ];
  for (const [glb, error] of cases) assert.throws(() => modelOf(glb), error);
});

test("a model has instances, annotations and views in their places", () => {
  const model = modelOf(
    cubes([[0.1, 0, 0]], (json) => {
      json.nodes[1].children = [2, 3, 4];
      delete json.nodes[1].mesh;
      json.nodes.push({ mesh: 0, matrix: [2, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1] });
      json.nodes.push({
        name: "flat",
        mesh: 0,
        extras: { kind: "geomtol flatness", id: "7", value: "▱ | 0.1", faces: ["6"], hidden: true },
      });
      json.nodes.push({
        name: "FRONT",
        camera: 0,
        extras: { id: "9", annotations: ["7"], clipping: [0, 0, 1, -0.005] },
      });
      json.cameras = [{ type: "orthographic", orthographic: { xmag: 0.02, ymag: 0.02 } }];
    }),
  );
  assert.deepEqual(
    model.instances.map(({ name, mesh }) => [name, mesh]),
    [
      ["product", null],
      ["Cube 1", 0],
    ],
  );
  near(boxOf(model, model.instances).high, [0.12, 0.01, 0]); // of the inner node; z is up, so y is behind
  const [annotation] = model.annotations;
  assert.deepEqual([annotation.value, annotation.owner.name, annotation.isHidden], ["▱ | 0.1", "Cube 1", true]);
  const session = new Session(model, new Facts());
  assert.equal(session.isAnnotationShown(annotation), false);
  session.useView(model.views[0]);
  const camera = session.cameraOf(model.views[0]);
  assert.equal(session.isAnnotationShown(annotation), true);
  near([...camera.back, camera.height], [0, 1, 0, 0.04]);
  const place = () => project(session.cameraOf(model.views[0]), annotation.world.slice(12, 15), session.aspect, session.radius);
  annotation.world[12] += 0.05; // beside the window
  assert.ok(Math.max(...place().slice(0, 2).map(Math.abs)) < 1);
  annotation.world[12] -= 0.05;
  near(planeOf(session.section, session.partsBox), [0, 1, 0, -0.005]);
  assert.equal(model.triangles, 12);
});

test("pieces are found by their triangles, also beside empty faces", () => {
  const starts = Uint32Array.from([0, 2, 2, 5, 6]);
  assert.deepEqual(
    [0, 1, 2, 4, 5].map((piece) => rangeOf(starts, piece)),
    [0, 0, 2, 2, 3],
  );
  assert.equal(findPieces(two().meshes[0], "triangles", "4").at, 3);
  assert.equal(findPieces(two().meshes[0], "lines", "4"), null);
});

test("the nearest face and edge under a ray are found, not what is cut away", () => {
  const model = two();
  const down = { origin: [0.034, 1, -0.002], direction: [0, -1, 0] }; // from above, z of the file
  const face = nearestTriangle(model, model.instances, down);
  assert.deepEqual([face.placed.name, face.id], ["Cube 2", "6"]);
  near(face.point, [0.034, 0.01, -0.002]);
  assert.equal(nearestTriangle(model, model.instances, down, ([, y]) => y < 0.005).id, "5");
  assert.equal(nearestTriangle(model, model.instances, { ...down, direction: [0, 1, 0] }), null);
  const edge = nearestLine(model, model.instances, { ...down, origin: [0.034, 1, -0.0001] }, () => 0.001);
  assert.deepEqual([edge.placed.name, edge.id], ["Cube 2", "e2"]);
  near(edge.ends.flat(), [0.03, 0.01, 0, 0.04, 0.01, 0]);
  assert.equal(
    nearestLine(model, model.instances, down, () => 0.001),
    null,
  );
});

test("distances and angles are exact", () => {
  const shape = (kind, point, direction, picked = point) => ({ kind, name: kind, point, direction, picked });
  const cases = [
    [shape("point", [0, 0, 0]), shape("point", [3, 4, 0]), 5, undefined],
    [shape("point", [0, 5, 0]), shape("line", [9, 0, 0], [1, 0, 0]), 5, undefined],
    [shape("plane", [7, 2, 7], [0, -1, 0]), shape("point", [0, 5, 0]), 3, undefined],
    [shape("line", [0, 0, 0], [1, 0, 0]), shape("line", [5, 0, 2], [0, 1, 0]), 2, 90],
    [shape("line", [0, 0, 0], [1, 0, 0]), shape("line", [5, 3, 4], [-1, 0, 0]), 5, 0],
    [shape("line", [0, 3, 0], [1, 0, 0]), shape("plane", [0, 0, 0], [0, 1, 0]), 3, 0],
    [shape("line", [0, 0, 0], [0, 1, 0]), shape("plane", [0, 9, 0], [0, Math.SQRT1_2, Math.SQRT1_2]), 9, 45],
    [shape("plane", [0, 0, 0], [0, 0, 1]), shape("plane", [5, 5, -4], [0, 0, -1]), 4, 0],
    [
      shape("plane", [0, 0, 0], [0, 0, 1]),
      shape("plane", [3, 4, 0], [0, Math.sin(Math.PI / 6), Math.cos(Math.PI / 6)]),
      5,
      30,
    ],
    [shape("free", [0, 0, 1]), shape("point", [9, 9, 9], undefined, [0, 0, 3]), 2, undefined],
  ];
  for (const [a, b, length, angle] of cases)
    for (const [first, second] of [
      [a, b],
      [b, a],
    ]) {
      const result = measure(first, second);
      near(result.distance, length, 1e-9);
      if (angle === undefined) assert.equal(result.angle, undefined);
      else near(result.angle, angle, 1e-6);
      if (result.isExact && first.kind === "point") near(result.ends[0], first.point);
    }
});

test("what is picked is measured by the facts, or else as it is drawn", () => {
  const model = two();
  const facts = new Facts({
    unit: "in",
    millimeters: 25.4,
    blocks: [
      {
        id: 1,
        faces: [{ id: "1", kind: "cylinder", radius: 2, axis: [0, 0, 1], center: [1, 0, 0] }],
        edges: [{ id: "e0", kind: "circle", axis: [0, 0, 1], center: [0, 0, 1] }],
      },
    ],
  });
  const pick = (kind, mode, id) => ({
    kind,
    id,
    instance: model.instances[2],
    point: [9, 9, 9],
    ...findPieces(model.meshes[0], mode, id),
  });
  const axis = shapeOf(pick("face", "triangles", "1"), facts);
  assert.equal(axis.name, "axis of cylinder");
  near([...axis.point, ...axis.direction], [0.0554, 0, 0, 0, 1, 0]);
  near(shapeOf(pick("edge", "lines", "e0"), facts).point, [0.03, 0.0254, 0]);
  const flat = shapeOf(pick("face", "triangles", "6"), facts);
  assert.deepEqual([flat.kind, flat.direction.map(Math.round)], ["plane", [0, 1, -0]]);
  assert.equal(shapeOf(pick("edge", "lines", "e1"), facts).kind, "line");
  assert.deepEqual(facts.rows({ radius: 0.5, area: 3.14159265 }), [
    ["Radius", "0.5\u00a0in"],
    ["Diameter", "1\u00a0in"],
    ["Area", "3.142\u00a0in²"],
  ]);
});

test("a section cuts triangles in closed outlines, on the eye's side", () => {
  const model = two();
  const section = sectionAcross(1, standardView(firstCamera(), "front"), model.toWorld);
  near(section.normal, [0, 0, 1]);
  const plane = planeOf(section, boxOf(model, model.instances));
  near(plane, [0, 0, 1, 0.005]);
  const ends = [];
  cutTriangles(model.meshes[0][0], planeIn(plane, model.instances[1].world), ends);
  const points = [];
  for (let i = 0; i < ends.length; i += 3) points.push(ends.slice(i, i + 3));
  for (const point of points) {
    near(point[1], 0.005);
    assert.equal(points.filter((other) => distance(point, other) < 1e-8).length % 2, 0);
  }
  assert.equal(points.length, 16);
  assert.equal(isClosed(model.meshes[0]), true);
  const [open] = model.meshes[0];
  assert.equal(isClosed([{ ...open, indices: open.indices.subarray(6) }]), false);
  near(
    planeOf(sectionOfView({ clipping: [2, 0, 0, -4], clippingWorld: placementOf({ translation: [1, 0, 0] }) }), {
      low: [0, 0, 0],
      high: [1, 1, 1],
    }),
    [1, 0, 0, -3],
  );
});

test("a part has the colour of most of its area", () => {
  const model = modelOf(cubes([[0, 0, 0]]));
  const [all] = model.meshes[0];
  const part = (first, end, color) => ({ ...all, indices: all.indices.slice(first, end), color });
  assert.equal(mainColor([part(0, 6, "small"), part(6, 24, "large"), { mode: "lines", color: "line" }]), "large");
  assert.equal(mainColor([{ mode: "lines", color: "line" }]), null);
});

test("the tree lists, opens, searches and goes where keys lead", () => {
  const model = modelOf(
    cubes(
      [
        [0, 0, 0],
        [1, 0, 0],
        [2, 0, 0],
      ],
      (json) => {
        json.nodes[0].children = [1, 3];
        json.nodes[1].children = [2];
      },
    ),
  );
  const tree = new Tree(model);
  const names = () =>
    tree.rows().map(({ instance, level, position, size }) => `${instance.name} ${level} ${position}/${size}`);
  assert.deepEqual(names(), ["Cube 1 1 1/2", "Cube 3 1 2/2"]);
  assert.equal(tree.key("ArrowRight", tree.rows(), 0), null); // opens
  assert.deepEqual(names(), ["Cube 1 1 1/2", "Cube 2 2 1/1", "Cube 3 1 2/2"]);
  assert.equal(tree.key("ArrowRight", tree.rows(), 0), 1);
  assert.equal(tree.key("ArrowLeft", tree.rows(), 1), 0);
  tree.key("ArrowLeft", tree.rows(), 0);
  assert.equal(tree.rows().length, 2);
  assert.equal(tree.search("BE 2"), 1);
  assert.deepEqual(names(), ["Cube 1 1 1/1", "Cube 2 2 1/1"]);
  assert.equal(tree.search("cube block"), 3);
  tree.search("");
  assert.equal(tree.rows().length, 2);
});

test("hiding, isolating and showing change what is shown", () => {
  const model = two();
  const session = new Session(model, new Facts());
  const told = [];
  session.on(["shown"], (what) => told.push(what));
  const [product, first, second] = model.instances;
  const states = () => [product, first, second].map((each) => session.shownOf(each));
  session.show(first, false);
  assert.deepEqual(states(), ["some", "none", "all"]);
  session.isolate(first);
  assert.deepEqual(states(), ["some", "all", "none"]);
  session.show(product, false);
  session.showAll();
  assert.deepEqual(states(), ["all", "all", "all"]);
  assert.equal(told.length, 4);
});

test("cameras fit, turn, move, zoom and fly", () => {
  const box = cornersOf({ low: [1, 2, 3], high: [2, 4, 9] });
  const isOrthonormal = ({ back, up }) => near([dot(back, up), dot(back, back), dot(up, up)], [0, 1, 1], 1e-9);
  for (const name of standardViews)
    for (const aspect of [0.5, 2])
      for (const isPerspective of [false, true]) {
        const camera = fitted(withPerspective(standardView(firstCamera(), name), isPerspective), box, aspect, 0.1);
        isOrthonormal(camera);
        const seen = box.map((point) => project(camera, point, aspect, 5));
        for (const [x, y] of seen) assert.ok(Math.abs(x) <= 1 && y <= 1 && y >= -0.81, `${name}: ${x}, ${y}`);
        assert.ok(Math.max(...seen.flatMap(([x, y]) => [Math.abs(x), y])) > 0.6, name);
        const [x, y] = seen[0];
        const ray = rayThrough(camera, x, y, aspect, 5);
        near(
          cross(
            ray.direction,
            box[0].map((each, k) => each - ray.origin[k]),
          ),
          [0, 0, 0],
          1e-9,
        );
      }
  const iso = fitted(standardView(firstCamera(), "iso"), box, 1.5);
  const moved = zoomed(panned(turned(iso, 0.3, -0.9), 0.1, 0.2, 1.5), 0.5, 0.4, -0.3, 1.5);
  isOrthonormal(moved);
  const turn = turned(iso, 0.3, -0.9);
  near(windowOf(moved, 1.5).height, windowOf(iso, 1.5).height / 2);
  const under = rayThrough(turn, 0.4, -0.3, 1.5, 5).origin;
  near(project(zoomed(turn, 0.5, 0.4, -0.3, 1.5), under, 1.5, 5).slice(0, 2), [0.4, -0.3], 1e-9);
  near(between(iso, moved, 1).back, moved.back, 1e-9);
  near(between(iso, moved, 0).up, iso.up, 1e-9);
  isOrthonormal(between(iso, moved, 0.4));
  const lens = savedCamera(
    {
      camera: { type: "perspective", perspective: { yfov: Math.PI / 3 } },
      world: placementOf({ translation: [0, 0, 10] }),
    },
    [0, 0, 0],
    1,
  );
  near([...lens.target, lens.height, lens.angle], [0, 0, 0, 20 * Math.tan(Math.PI / 6), 60], 1e-9);
});

test("pointers click, turn, move and pinch", () => {
  const log = [];
  const note =
    (name) =>
    (...values) =>
      log.push([name, ...values.map((each) => Math.round(each * 100) / 100)]);
  const gestures = new Gestures({ turn: note("turn"), pan: note("pan"), zoom: note("zoom"), click: note("click") });
  const at = (pointerId, clientX, clientY, more = {}) => ({ pointerId, clientX, clientY, ...more });
  gestures.down(at(1, 10, 10));
  gestures.move(at(1, 12, 11));
  gestures.up(at(1, 12, 11));
  gestures.down(at(1, 0, 0));
  gestures.move(at(1, 30, 10));
  gestures.up(at(1, 30, 10));
  gestures.down(at(1, 0, 0, { button: 2 }));
  gestures.move(at(1, 0, 20));
  gestures.up(at(1, 0, 20));
  gestures.down(at(1, 0, 0));
  gestures.down(at(2, 100, 0));
  gestures.move(at(2, 200, 0));
  gestures.up(at(2, 200, 0));
  gestures.up(at(1, 0, 0));
  gestures.wheel({ deltaY: -100, deltaMode: 0, clientX: 5, clientY: 6 });
  assert.deepEqual(log, [
    ["click", 12, 11],
    ["turn", 30, 10],
    ["pan", 0, 20],
    ["pan", 50, 0],
    ["zoom", 0.5, 100, 0],
    ["zoom", 0.86, 5, 6],
  ]);
});

test("texts, controls and strokes keep the contrast of WCAG AA", () => {
  near(contrast([0, 0, 0], [1, 1, 1]), 21, 1e-9);
  near(fromLinear([0.214041, 1, 0]), [0.5, 1, 0], 1e-4);
  const texts = ["text", "muted", "accent", "warning"].flatMap((ink) =>
    ["panel", "raised"].map((ground) => [ink, ground, 4.5]),
  );
  const pairs = [
    ...texts,
    ["text", "chosen", 4.5],
    ["accent", "chosen", 4.5],
    ["muted", "chosen", 4.5],
    ["control", "panel", 3],
    ["accent", "ground", 3],
    ["accent", "groundLow", 3],
  ];
  for (const [name, palette] of Object.entries(palettes)) {
    for (const [ink, ground, least] of pairs) {
      const found = contrast(fromHex(palette[ink]), fromHex(palette[ground]));
      assert.ok(found >= least, `${name}: ${ink} on ${ground} has ${found.toFixed(2)}`);
    }
    for (const color of [
      [0, 0, 0],
      [1, 1, 1],
      [0.1, 0.2, 0.75],
      [1, 1, 0],
      [0.5, 0.5, 0.5],
    ])
      assert.ok(
        contrast(legible(color, fromHex(palette.ground), 4.5), fromHex(palette.ground)) >= 4.5,
        `${name}: ${color}`,
      );
  }
  assert.deepEqual(legible([0, 0, 0], [1, 1, 1], 4.5), [0, 0, 0]);
});

test("ten thousand instances are opened and listed at once", () => {
  const model = modelOf(
    cubes(Array.from({ length: 10_000 }, (_, i) => [i % 100, Math.floor(i / 100), 0].map((each) => each * 0.02))),
  );
  assert.equal(new Tree(model).rows().length, 10_000);
  assert.equal(model.triangles, 120_000);
  const under = (x, z) => nearestTriangle(model, model.instances, { origin: [x, 1, z], direction: [0, -1, 0] });
  assert.equal(under(1.004, -1.006).placed.name, "Cube 5051");
  assert.equal(under(1.015, -1.006), null);
});

test("characters with a shape of their own stand apart from the text around them", () => {
  const { symbols } = new Facts({ symbols: { "⌖": {}, "Ⓜ": {} } });
  assert.deepEqual(symbols.pieces("⌖ | ⌀0.2 ⓂⓂ"), [
    { character: "⌖" },
    { text: " | ⌀0.2 " },
    { character: "Ⓜ" },
    { character: "Ⓜ" },
  ]);
  assert.deepEqual(new Facts().symbols.pieces("⌖"), [{ text: "⌖" }]);
});
