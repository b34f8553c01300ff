// Elements of the page.

/**
 * Makes an element.
 * @param {string} name of the element, with classes after dots: "button.icon"
 * @param {object} members attributes, and handlers such as onclick
 * @param {...(Node|string)} children texts from files come here, so they are never HTML
 */
export function make(name, members = {}, ...children) {
  const [tag, ...classes] = name.split(".");
  const element = document.createElement(tag);
  element.className = classes.join(" ");
  for (const [key, value] of Object.entries(members)) {
    if (typeof value === "function") element.addEventListener(key.slice(2), value);
    else if (value === true) element.setAttribute(key, "");
    else if (value !== false && value !== null && value !== undefined) element.setAttribute(key, value);
  }
  element.append(...children.filter((each) => each !== null && each !== undefined));
  return element;
}

const paths = {
  fit: "M3 6V3h3M10 3h3v3M13 10v3h-3M6 13H3v-3",
  iso: "M8 2l5 3v6l-5 3-5-3V5zM3 5l5 3 5-3M8 8v6",
  front: "M3 3h10v10H3z", back: "M3 3h10v10H3zM6 6h4v4H6z", left: "M3 3h10v10H3zM6 3v10", right: "M3 3h10v10H3zM10 3v10",
  top: "M3 3h10v10H3zM3 6h10", bottom: "M3 3h10v10H3zM3 10h10",
  perspective: "M2 5h12M4 12h8M2 5l2 7M14 5l-2 7M8 5v7",
  edges: "M3 6l5-3 5 3v5l-5 3-5-3z", pmi: "M2 4h12v7H7l-3 3v-3H2zM5 7.5h6",
  section: "M3 3h10v10H3zM3 13L13 3", measure: "M2 10.5L10.5 2 14 5.5 5.5 14zM5 7.5l1.5 1.5M7.5 5L9 6.5",
  theme: "M8 2a6 6 0 1 0 0 12zM8 2a6 6 0 0 1 0 12", help: "M6 6a2 2 0 1 1 2.5 2c-.5.2-.5.6-.5 1.5M8 12v.5",
  shown: "M1.5 8S4 3.5 8 3.5 14.5 8 14.5 8 12 12.5 8 12.5 1.5 8 1.5 8zM8 6.200a1.8 1.8 0 1 0 .01 0",
  hidden: "M3 3l10 10M1.5 8S4 3.5 8 3.5c3 0 5 2.5 6.5 4.5M1.5 8S4 12.5 8 12.5",
  isolate: "M8 5a3 3 0 1 0 .01 0M8 1v2M8 13v2M1 8h2M13 8h2", open: "M6 4l4 4-4 4", close: "M4 4l8 8M12 4l-8 8",
  flip: "M3 6h9L9 3M13 10H4l3 3", panel: "M2 3h12v10H2zM6 3v10", clear: "M3 5h10M6 5V3h4v2M5 5l.5 8h5l.5-8",
};

/** A picture of 16 x 16, which says nothing to those who do not see it. */
export function icon(name) {
  const svg = document.createElementNS("http://www.w3.org/2000/svg", "svg");
  for (const [key, value] of Object.entries({ viewBox: "0 0 16 16", width: 16, height: 16, "aria-hidden": "true" })) svg.setAttribute(key, value);
  const path = document.createElementNS("http://www.w3.org/2000/svg", "path");
  path.setAttribute("d", paths[name]);
  svg.append(path);
  return svg;
}

/** A button with a picture; its label is read out, and shown beside the picture unless it is `isBare`. */
export function button(picture, label, act, { isBare = false, title = label, ...members } = {}) {
  const text = isBare ? null : make("span", {}, label);
  return make("button", { type: "button", title, "aria-label": isBare ? label : null, onclick: act, ...members }, icon(picture), text);
}

/** A table of rows [label, text]. */
export function table(rows) {
  return make("dl.facts", {}, ...rows.flatMap(([label, text]) => [make("dt", {}, label), make("dd", {}, text)]));
}
