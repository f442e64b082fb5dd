// PNG (ISO/IEC 15948) with all of its bits: the canvas would cut 16 bits to 8. The browser reads
// the other files: palettes, fewer than 8 bits, interlaced ones.
const PNG_BEGIN = [137, 80, 78, 71, 13, 10, 26, 10];

const isPng = (bytes) => PNG_BEGIN.every((byte, i) => bytes[i] === byte);

// Undoes the filter of each row, in place; returns the rows without their filter bytes.
function unfilter(data, rowBytes, height, pixelBytes) {
  const out = new Uint8Array(rowBytes * height);
  for (let y = 0; y < height; ++y) {
    const kind = data[y * (rowBytes + 1)], from = y * (rowBytes + 1) + 1, to = y * rowBytes;
    for (let i = 0; i < rowBytes; ++i) {
      const left = i >= pixelBytes ? out[to + i - pixelBytes] : 0;
      const above = y > 0 ? out[to + i - rowBytes] : 0;
      const corner = i >= pixelBytes && y > 0 ? out[to + i - rowBytes - pixelBytes] : 0;
      let predicted = 0;
      if (kind === 1) predicted = left;
      else if (kind === 2) predicted = above;
      else if (kind === 3) predicted = (left + above) >> 1;
      else if (kind === 4) {
        const p = left + above - corner, a = Math.abs(p - left), b = Math.abs(p - above), c = Math.abs(p - corner);
        predicted = a <= b && a <= c ? left : b <= c ? above : corner;
      }
      out[to + i] = data[from + i] + predicted;
    }
  }
  return out;
}

async function inflate(parts) {
  const stream = new Blob(parts).stream().pipeThrough(new DecompressionStream("deflate"));
  return new Uint8Array(await new Response(stream).arrayBuffer());
}

/** The samples of a PNG as a raw frame: gray or RGB of 8 bits, or of 16 with the low byte first. Null for other files. */
async function readPng(bytes) {
  const view = new DataView(bytes.buffer, bytes.byteOffset, bytes.length), parts = [];
  const width = view.getUint32(16), height = view.getUint32(20), depth = bytes[24], color = bytes[25];
  const channels = {0: 1, 2: 3, 4: 2, 6: 4}[color];
  if (!channels || depth < 8 || bytes[28] !== 0) return null;
  for (let at = 8; at + 8 <= bytes.length;) {
    const length = view.getUint32(at), name = String.fromCharCode(...bytes.subarray(at + 4, at + 8));
    if (name === "IDAT") parts.push(bytes.subarray(at + 8, at + 8 + length));
    at += length + 12;
  }
  const pixelBytes = channels * depth / 8;
  const rows = unfilter(await inflate(parts), width * pixelBytes, height, pixelBytes);
  const kept = channels > 2 ? 3 : 1, step = depth / 8;  // without transparency
  const out = new Uint8Array(width * height * kept * step);
  for (let pixel = 0, to = 0; pixel < width * height; ++pixel) {
    for (let i = 0; i < kept * step; ++i) out[to++] = rows[pixel * pixelBytes + (step === 2 ? i ^ 1 : i)];
  }
  return {bytes: out, width, height, name: kept === 3 ? (step === 2 ? "RGB16" : "RGB8") : null};
}

/** Any picture that the browser shows, as RGB of 8 bits. */
async function readPicture(file) {
  const bitmap = await createImageBitmap(file);
  const canvas = new OffscreenCanvas(bitmap.width, bitmap.height), context = canvas.getContext("2d");
  context.drawImage(bitmap, 0, 0);
  const rgba = context.getImageData(0, 0, bitmap.width, bitmap.height).data;
  const bytes = new Uint8Array(rgba.length / 4 * 3);
  for (let i = 0, to = 0; i < rgba.length; i += 4) bytes.set(rgba.subarray(i, i + 3), (to += 3) - 3);
  return {bytes, width: bitmap.width, height: bitmap.height, name: "RGB8"};
}
