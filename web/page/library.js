// The library: texts of the glue become objects, errors become exceptions.
const byId = (id) => document.getElementById(id);

class Library {
  constructor(module) {
    this.module = module;
    module._lm_start();
    this.formats = this.lines(module._lm_formats()).map(([type, flags, kind, bits, name, argument]) =>
      ({type: Number(type), flags: Number(flags), kind, bits: Number(bits), name, argument}));
  }

  text(pointer) {
    const text = this.module.UTF8ToString(pointer);
    const error = this.module.UTF8ToString(this.module._lm_error());
    if (error) throw new Error(error);
    return text;
  }
  lines(pointer) {
    return this.text(pointer).split("\n").filter((line) => line).map((line) => line.split("\t"));
  }

  format(type, flags) {
    return this.formats.find((format) => format.type === type && format.flags === flags);
  }

  /** Hands the bytes of a file over. */
  open(bytes) {
    this.module.HEAPU8.set(bytes, this.module._lm_file(bytes.length));
    this.size = bytes.length;
  }
  openScene(format, width, height) {
    this.size = this.module._lm_scene(format.type, format.flags, width, height);
  }
  guess(width = 0, height = 0) {
    return this.lines(this.module._lm_guess(width, height)).map((fields) => {
      const [type, flags, w, h, bits] = fields.map(Number);
      return {format: this.format(type, flags), width: w, height: h, bits};
    });
  }
  bits(type) {
    const [words, ...planes] = this.text(this.module._lm_bits(type)).split(/\n\n/);
    return {words, planes: planes.map((plane) => plane.trim().split("\n").map((byte) => byte.split("\t")))};
  }
  required(frame) {
    return this.module._lm_required(frame.format.type, frame.width, frame.height, frame.lineSize || 0);
  }

  /** Chooses the frame and the look of all that follows. */
  read(frame, look) {
    this.module._lm_read(frame.format.type, frame.format.flags, frame.width, frame.height, frame.offset || 0, frame.lineSize || 0);
    this.module._lm_look(frame.format.kind === "mosaic" ? look.method : 0, look.black, ...gainsWithExposure(look), look.tone, look.gamma);
  }
  develop() {
    const pixels = this.module._lm_develop();
    if (!pixels) this.text(this.module._lm_error());
    const width = this.module._lm_width(), height = this.module._lm_height();
    // The heap moves when it grows, so the bytes are copied.
    return new ImageData(new Uint8ClampedArray(this.module.HEAPU8.slice(pixels, pixels + 4 * width * height).buffer), width, height);
  }
  /** Gains of the surroundings of a pixel, or of the frame. */
  balance(x = 0, y = 0, radius = 0) {
    return this.text(this.module._lm_balance(x, y, radius)).split("\t").map((gain) => Number(Number(gain).toFixed(3)));
  }
  samples(x, y) {
    return this.lines(this.module._lm_samples(x, y)).map(([name, count, most]) => ({name, count, most}));
  }
  histogram() {
    return this.lines(this.module._lm_histogram()).map(([name, parts]) => ({name, parts: parts.trim().split(" ").map(Number)}));
  }
}
