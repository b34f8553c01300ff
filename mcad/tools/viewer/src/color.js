// Colours as [red, green, blue] of sRGB from 0 to 1, with the contrast of WCAG 2.1.

const toLinear = (c) => (c <= 0.04045 ? c / 12.92 : ((c + 0.055) / 1.055) ** 2.4);
const toGamma = (c) => (c <= 0.0031308 ? 12.92 * c : 1.055 * c ** (1 / 2.4) - 0.055);

/** The sRGB of the linear factors of glTF. */
export const fromLinear = (rgb) => rgb.slice(0, 3).map((c) => toGamma(Math.min(1, Math.max(0, c))));

/** The colour that "#rrggbb" stands for. */
export const fromHex = (text) => [1, 3, 5].map((at) => parseInt(text.slice(at, at + 2), 16) / 255);

export const luminance = (rgb) => {
  const [r, g, b] = rgb.map(toLinear);
  return 0.2126 * r + 0.7152 * g + 0.0722 * b;
};

/** From 1 for the same to 21 for black on white. */
export function contrast(a, b) {
  const [dark, light] = [luminance(a), luminance(b)].sort((x, y) => x - y);
  return (light + 0.05) / (dark + 0.05);
}

/**
 * The colour, as little lightened or darkened as gives it a contrast with the ground. It moves away from the ground;
 * what cannot be reached on that side is looked for on the other one.
 */
export function legible(color, ground, least) {
  if (contrast(color, ground) >= least) return color;
  const ends = luminance(ground) > 0.18 ? [0, 1] : [1, 0];
  for (const end of ends)
    for (let t = 0.05; t <= 1.001; t += 0.05) {
      const moved = color.map((c) => c + (end - c) * Math.min(1, t));
      if (contrast(moved, ground) >= least) return moved;
    }
  return color;
}
