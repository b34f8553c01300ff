// Reads binary glTF 2.0 as far as zeq writes it: one buffer, tight accessors, which become typed arrays without copies.

const components = {
  5121: Uint8Array,
  5123: Uint16Array,
  5125: Uint32Array,
  5126: Float32Array,
};
const widths = { SCALAR: 1, VEC3: 3 };

/**
 * @param {ArrayBuffer} buffer the file
 * @returns {{json: object, accessor: (index: number) => ArrayLike<number>}} accessor gives a view of the buffer
 * @throws {Error} of what is not such a file
 */
export function readGlb(buffer) {
  const view = new DataView(buffer);
  if (buffer.byteLength < 20 || view.getUint32(0, true) !== 0x46546c67) throw new Error("The model is no binary glTF.");
  if (view.getUint32(4, true) !== 2) throw new Error(`The model is of version ${view.getUint32(4, true)} of glTF, not 2.`);
  if (view.getUint32(8, true) !== buffer.byteLength)
    throw new Error(`The model has ${buffer.byteLength} bytes and should have ${view.getUint32(8, true)}.`);
  const chunks = new Map();
  for (let at = 12; at + 8 <= buffer.byteLength; ) {
    const size = view.getUint32(at, true);
    if (at + 8 + size > buffer.byteLength) throw new Error("The model ends in the middle of a chunk.");
    chunks.set(view.getUint32(at + 4, true), [at + 8, size]);
    at += 8 + size;
  }
  const text = chunks.get(0x4e4f534a);
  if (!text) throw new Error("The model has no description.");
  const json = JSON.parse(new TextDecoder().decode(new Uint8Array(buffer, ...text)));
  const [start, size] = chunks.get(0x004e4942) ?? [0, 0];

  function accessor(index) {
    const { bufferView, byteOffset = 0, componentType, count, type } = json.accessors?.[index] ?? {};
    const { byteOffset: offset = 0, byteLength = 0, byteStride } = json.bufferViews?.[bufferView] ?? {};
    const Type = components[componentType];
    const width = widths[type];
    if (!Type || !width) throw new Error(`Accessor ${index} of the model is missing or of another kind.`);
    const bytes = width * Type.BYTES_PER_ELEMENT;
    if (byteStride && byteStride !== bytes) throw new Error(`Accessor ${index} of the model is not tight.`);
    if (byteOffset + count * bytes > byteLength || offset + byteLength > size)
      throw new Error(`Accessor ${index} of the model leaves its buffer.`);
    return new Type(buffer, start + offset + byteOffset, count * width);
  }
  return { json, accessor };
}
