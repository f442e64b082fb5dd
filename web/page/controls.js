// The form: from the frame and the look to inputs, and back.
const NEUTRAL = {method: 1024, gains: [1, 1, 1], black: 0, exposure: 0, tone: 0, gamma: 2.2};
const GAINS = ["gain-red", "gain-green", "gain-blue"];

/** The exposure is one more factor of all colours. */
const gainsWithExposure = (look) => look.gains.map((gain) => Math.min(1000, Number((gain * 2 ** look.exposure).toFixed(3))));

class Controls {
  constructor(library, onChange) {
    this.library = library;
    const groups = {gray: "Gray", mosaic: "Bayer mosaics", rgb: "RGB and BGR", yuv: "YUV"};
    byId("format").replaceChildren(...Object.entries(groups).map(([kind, title]) => {
      const group = document.createElement("optgroup");
      group.label = title;
      library.formats.forEach((format, i) => {
        if (format.kind === kind) group.append(new Option(format.name, String(i)));
      });
      return group;
    }));
    // Some browsers report the choice of an option by one of these alone.
    for (const kind of ["input", "change"]) {
      byId("controls").addEventListener(kind, () => { this.describe(); onChange(); });
    }
    byId("controls").addEventListener("submit", (event) => event.preventDefault());
  }

  get frame() {
    const number = (id) => Math.max(0, Math.floor(Number(byId(id).value) || 0));
    return {format: this.library.formats[Number(byId("format").value)], width: number("width"), height: number("height"),
            offset: number("offset"), lineSize: number("line")};
  }
  set frame(frame) {
    byId("format").value = String(this.library.formats.indexOf(frame.format));
    byId("width").value = frame.width;
    byId("height").value = frame.height;
    byId("offset").value = frame.offset || 0;
    byId("line").value = frame.lineSize || 0;
    this.describe();
  }
  get look() {
    const number = (id) => Number(byId(id).value) || 0;
    return {method: number("method"), gains: GAINS.map(number), black: number("black"), exposure: number("exposure"),
            tone: number("tone"), gamma: number("gamma")};
  }
  set look(look) {
    byId("method").value = look.method;
    GAINS.forEach((id, i) => { byId(id).value = look.gains[i]; });
    byId("black").value = look.black;
    byId("exposure").value = look.exposure;
    byId("tone").value = look.tone;
    byId("gamma").value = look.gamma;
    this.describe();
  }
  get methodName() {
    return byId("method").selectedOptions[0].dataset.name;
  }

  describe() {
    const format = this.frame.format;
    byId("method").disabled = !format || format.kind !== "mosaic";
    if (format) byId("black").max = Math.max(1, 2 ** (format.bits - 2) - 1);
    byId("black-value").value = `${byId("black").value} counts`;
    byId("exposure-value").value = `${byId("exposure").value} EV`;
    byId("gamma-value").value = byId("gamma").value;
    byId("gamma-label").hidden = byId("tone").value !== "3";
  }
}
