// What of the file has arrived, what has not, and what the file says of itself.
import { make, table } from "./dom.js";

const counts = ["file", "sent", "arrived"];

function lossTable(losses) {
  const heads = ["", "In the file", "Sent", "Arrived"].map((each) => make("th", { scope: "col" }, each || "Kind"));
  const rows = losses.flatMap((loss) => {
    const known = counts.map((key) => loss[key]).filter((each) => each !== undefined);
    const isLess = known.some((each) => each < known[0]);
    const cells = counts.map((key) => make("td", {}, loss[key] === undefined ? "–" : String(loss[key])));
    const name = [loss.part, loss.what].filter(Boolean).join(": ");
    const row = make(isLess ? "tr.less" : "tr", {}, make("th", { scope: "row" }, name), ...cells);
    const reasons = (loss.reasons ?? []).map((each) => make("li", {}, each));
    return reasons.length === 0 ? [row] : [row, make("tr.reasons", {}, make("td", { colspan: 4 }, make("ul", {}, ...reasons)))];
  });
  return make("table.losses", {}, make("caption", {}, "Contents of the file"), make("thead", {}, make("tr", {}, ...heads)), make("tbody", {}, ...rows));
}

/** A value with its unit as the page writes them; numbers of more digits than anybody reads are cut. */
export function valueText({ value, unit = "" }) {
  const isLong = value.length > 10 && /^-?\d+\.\d+(e[-+]\d+)?$/i.test(value);
  const text = isLong ? String(Number(Number(value).toPrecision(9))) : value;
  return [text, unit.replaceAll("^2", "²").replaceAll("^3", "³")].filter(Boolean).join("\u00a0");
}

/** The groups of properties of a part or of the whole file. */
export function propertyGroups(groups) {
  return (groups ?? []).map(({ name, properties }) =>
    make("section.group", {}, make("h3", {}, name),
      table(properties.map((each) => [each.name, valueText(each)]))));
}

/** @param {import("./session.js").Session} session */
export function reportPanel({ facts, model }) {
  const { losses, warnings, generator } = facts;
  const product = model.blocks.get(0)?.properties?.filter(({ name }) => !name.startsWith("contents of the file"));
  return make("div.panel.scrolls", { hidden: true, tabindex: 0, role: "region", "aria-label": "Report" },
    losses.length > 0 ? lossTable(losses) : make("p.note", {}, "Nothing is known of what the file holds."),
    warnings.length > 0 ? make("section.group.warnings", {}, make("h3", {}, "Warnings"), make("ul", {}, ...warnings.map((each) => make("li", {}, each)))) : null,
    ...propertyGroups(product),
    make("p.note", {}, [facts.file, generator && `made by ${generator}`].filter(Boolean).join(", ")));
}
