// The data elements of the page: gzip in Base64.

const chunk = 4 * 65536; // of Base64, decoded at a time

function* bytesOf(base64) {
  for (let at = 0; at < base64.length; at += chunk) {
    const text = atob(base64.slice(at, at + chunk));
    const bytes = new Uint8Array(text.length);
    for (let i = 0; i < text.length; ++i) bytes[i] = text.charCodeAt(i);
    yield bytes;
  }
}

/**
 * What a data element holds.
 * @param {string} text Base64 of gzip
 * @param {string} what names the data in errors
 * @returns {Promise<ArrayBuffer>}
 */
export async function unpack(text, what) {
  try {
    const stream = new Blob([...bytesOf(text.replace(/\s+/g, ""))]).stream();
    return await new Response(stream.pipeThrough(new DecompressionStream("gzip"))).arrayBuffer();
  } catch (error) {
    throw new Error(`The ${what} in this page is damaged: ${error.message}`);
  }
}
