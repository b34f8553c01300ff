// Characters of annotations that few fonts have, drawn with the strokes that the model has them in.

const svgOf = (name, members) => {
  const element = document.createElementNS("http://www.w3.org/2000/svg", name);
  for (const [key, value] of Object.entries(members)) element.setAttribute(key, value);
  return element;
};

export class Symbols {
  #shapes;

  /** @param {Object<string, {width: number, strokes: string, areas: string}>} shapes paths by character, in units of which
   * capital letters have 21, upwards from a base line at 0 */
  constructor(shapes = {}) { this.#shapes = new Map(Object.entries(shapes)); }

  /** The pieces of a text: characters that have a shape, and what stands between them. */
  pieces(text) {
    const result = [];
    for (const character of text) {
      if (this.#shapes.has(character)) result.push({ character });
      else if (result.at(-1)?.text) result.at(-1).text += character;
      else result.push({ text: character });
    }
    return result;
  }

  /** A text as nodes; it still reads, and copies, as it stands. */
  nodes(text) {
    return this.pieces(text).map((piece) => piece.text ?? this.#draw(piece.character));
  }

  #draw(character) {
    const { width, strokes, areas } = this.#shapes.get(character);
    const svg = svgOf("svg", {
      viewBox: `-1 -24 ${width + 2} 30`,
      width: `${((width + 2) / 30) * 1.25}em`,
      height: "1.25em",
      "aria-hidden": "true",
    });
    svg.append(svgOf("path", { d: strokes }), svgOf("path", { d: areas, class: "area" }));
    const span = document.createElement("span");
    span.className = "symbol";
    const text = document.createElement("span");
    text.textContent = character;
    span.append(svg, text);
    return span;
  }
}
