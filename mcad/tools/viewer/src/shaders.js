// What is drawn in the graphics processor. Colours are those of the screen (sRGB) throughout; `clip` cuts away what has
// clip.xyz · point + clip.w > 0.

const place = /* glsl */ `
uniform vec4 clip;
out float vCut;
vec4 worldOf(vec3 point) {
  vec4 world = place * vec4(point, 1.0);
  vCut = dot(clip, world);
  return world;
}
`;

const cut = /* glsl */ `
in float vCut;
`;

/** Lit as zeq picture has it: sky and ground, a key light at the upper left, a weak highlight, fixed to the camera. */
export const surface = {
  vertexShader: /* glsl */ `
in mat4 place;
in float mark;
${place}
out vec3 vNormal;
out vec3 vEye;
out float vMark;
void main() {
  vec4 eye = viewMatrix * worldOf(position);
  mat3 m = mat3(place);
  mat3 cofactors = mat3(cross(m[1], m[2]), cross(m[2], m[0]), cross(m[0], m[1]));
  vNormal = mat3(viewMatrix) * (cofactors * normal);
  vEye = eye.xyz;
  vMark = mark;
  gl_Position = projectionMatrix * eye;
}`,
  fragmentShader: /* glsl */ `
${cut}
uniform vec4 color;
uniform vec3 accent;
in vec3 vNormal;
in vec3 vEye;
in float vMark;
out vec4 result;
void main() {
  if (vCut > 0.0) discard;
  vec3 toEye = isOrthographic ? vec3(0.0, 0.0, 1.0) : normalize(-vEye);
  vec3 n = normalize(vNormal);
  if (dot(n, toEye) < 0.0) n = -n;
  const vec3 key = vec3(-0.5514, 0.5213, 0.6517), fill = vec3(0.7682, -0.1280, 0.6273);
  float light = 0.35 + 0.16 * (0.5 + 0.5 * n.y) + 0.52 * max(0.0, dot(n, key)) + 0.11 * max(0.0, dot(n, fill));
  float shine = 0.16 * pow(max(0.0, dot(n, normalize(key + toEye))), 32.0);
  vec3 base = mix(color.rgb, accent, 0.5 * vMark);
  result = vec4(min(vec3(1.0), base * light + shine), color.a);
}`,
};

/** Surfaces in a plain colour: areas of annotations, and faces that stand out. */
export const plain = {
  vertexShader: /* glsl */ `
in mat4 place;
${place}
void main() {
  gl_Position = projectionMatrix * viewMatrix * worldOf(position);
}`,
  fragmentShader: /* glsl */ `
${cut}
uniform vec4 color;
out vec4 result;
void main() {
  if (vCut > 0.0) discard;
  result = color;
}`,
};

/** Segments as ribbons of a width in pixels: four vertices each, of which every one knows both ends. */
export const line = {
  vertexShader: /* glsl */ `
in mat4 place;
in float mark;
in vec3 other;
${place}
uniform vec2 viewport;
uniform float width;
uniform float lift;
uniform float extent;
out float vMark;
/** Lines of what is small on the screen fade away, or nothing of its colour would be left. */
float strength(float depth) {
  float pixels = extent * length(place[0].xyz) * projectionMatrix[1][1] / depth * viewport.y * 0.5;
  return extent > 0.0 ? clamp((pixels - 6.0 * width) / (30.0 * width), 0.0, 1.0) : 1.0;
}
void main() {
  vec4 near = projectionMatrix * viewMatrix * (place * vec4(other, 1.0));
  vec4 here = projectionMatrix * viewMatrix * worldOf(position);
  vec2 along = (near.xy / near.w - here.xy / here.w) * viewport;
  float size = length(along);
  along = size > 1e-6 ? along / size : vec2(1.0, 0.0);
  float side = (gl_VertexID & 1) == 0 ? 1.0 : -1.0;
  float wide = width * (1.0 + 0.8 * mark) * max(strength(here.w), mark);
  vec2 offset = side * vec2(-along.y, along.x) - 0.5 * along;
  here.xy += offset * wide / viewport * here.w;
  here.z -= lift * here.w;
  vMark = mark;
  gl_Position = here;
}`,
  fragmentShader: /* glsl */ `
${cut}
uniform vec4 color;
uniform vec3 accent;
in float vMark;
out vec4 result;
void main() {
  if (vCut > 0.0) discard;
  result = vec4(mix(color.rgb, accent, vMark), color.a);
}`,
};

/** Round points of a size in pixels. */
export const point = {
  vertexShader: /* glsl */ `
in mat4 place;
in float mark;
${place}
uniform float width;
out float vMark;
void main() {
  gl_Position = projectionMatrix * viewMatrix * worldOf(position);
  gl_Position.z -= 0.0005 * gl_Position.w;
  gl_PointSize = width * 3.5;
  vMark = mark;
}`,
  fragmentShader: line.fragmentShader.replace(
    "if (vCut > 0.0) discard;",
    "if (vCut > 0.0 || length(gl_PointCoord - 0.5) > 0.5) discard;",
  ),
};

/** The plane of a section, hatched, in window coordinates. */
export const cap = {
  vertexShader: /* glsl */ `
void main() {
  gl_Position = projectionMatrix * viewMatrix * vec4(position, 1.0);
}`,
  fragmentShader: /* glsl */ `
uniform vec4 color;
uniform vec2 hatch;
out vec4 result;
void main() {
  float at = abs(fract(dot(gl_FragCoord.xy, hatch)) - 0.5);
  float edge = fwidth(dot(gl_FragCoord.xy, hatch));
  float ink = smoothstep(0.5 - edge * 1.2, 0.5, at);
  result = vec4(color.rgb * mix(1.0, 0.72, ink), 1.0);
}`,
};
