// Opens files, and shows the chosen reading of them.
let library, controls, view, guesses = [], file = {name: "frame.raw"};

function report(text, isError = false) {
  const status = byId("status");
  status.textContent = text;
  status.classList.toggle("error", isError);
}

const partsOf = (frame, look) => frame.format.kind === "mosaic" && look.method === 65536 ? 2 : 1;

/** Shows the frame and the look of the form, whole: picture, histogram, bits and recipes. */
function show() {
  const frame = controls.frame, look = controls.look;
  markGuess(guesses, frame);
  try {
    library.read(frame, look);
    view.show(library.develop());
    const spare = library.size - frame.offset - library.required(frame);
    report(`${file.name}: ${frame.format.name}, ${sizeText(frame)}` + (spare > 0 ? `, and ${spare} bytes after it` : ""));
  } catch (error) {
    report(error.message, true);
    return;
  }
  showRecipes(file.name, frame, look, controls.methodName);
}

function showFormat() {
  const frame = controls.frame;
  drawBits(library, frame.format);
  try {
    library.read(frame, controls.look);
    drawHistogram(library.histogram());
  } catch {
    drawHistogram([]);
  }
  byId("pixel").value = "Move over the picture to see counts.";
}

/** Several changes between two pictures of the screen are shown once. */
let pending = false;
function showSoon() {
  if (pending) return;
  pending = true;
  requestAnimationFrame(() => { pending = false; show(); });
}

let shown = "";
function onChange() {
  const {format, ...rest} = controls.frame, key = JSON.stringify([format.name, rest]);
  if (key !== shown) showFormat();
  shown = key;
  showSoon();
}

function choose(frame) {
  controls.frame = frame;
  controls.look = {...NEUTRAL, method: controls.look.method};
  view.at = null;
  onChange();
}

function balance(...where) {
  try {
    library.read(controls.frame, controls.look);
    controls.look = {...controls.look, gains: library.balance(...where)};
  } catch (error) {
    report(error.message, true);
    return;
  }
  show();
}

/** A hundredth of the width around the pixel is taken to be gray. */
function balanceAt(x, y) {
  const frame = controls.frame, parts = partsOf(frame, controls.look);
  balance(x * parts, y * parts, Math.max(2, Math.round(frame.width / 100)));
}

function showPixel(x, y) {
  const frame = controls.frame, look = controls.look, parts = partsOf(frame, look);
  try {
    library.read(frame, look);
    byId("pixel").value = pixelText(library, x * parts, y * parts);
  } catch (error) {
    byId("pixel").value = error.message;
  }
}

/** Guesses how the bytes in the library are read; `known` may have a size, and a format. */
function open(known) {
  const format = known.format && library.formats.find((f) => f.name === known.format);
  guesses = format ? [{format, width: known.width, height: known.height}] : library.guess(known.width, known.height);
  byId("welcome").hidden = true;
  byId("work").hidden = false;
  showGuesses(library, guesses, choose);
  shown = "";
  if (guesses.length > 0) return choose(guesses[0]);
  report(`${file.name}: no common size fits ${library.size} bytes. Enter the format and the size.`, true);
  controls.frame = {format: library.formats[0], width: 0, height: 0};
}

async function openFile(chosen) {
  file = chosen;
  report(`Reading ${chosen.name}…`);
  try {
    const bytes = new Uint8Array(await chosen.arrayBuffer());
    if (bytes.length === 0) throw new Error(`${chosen.name} is empty.`);
    const picture = isPng(bytes) ? await readPng(bytes) || await readPicture(chosen) : null;
    report(`Looking at ${chosen.name}…`);
    await new Promise((resolve) => setTimeout(resolve, 30));  // so that the text appears
    library.open(picture ? picture.bytes : bytes);
    open(picture ? {width: picture.width, height: picture.height, format: picture.name} : {});
  } catch (error) {
    report(`${chosen.name}: ${error.message}`, true);
  }
}

function openExample() {
  const format = library.formats.find((f) => f.name === "BayerRG12p");
  file = {name: "example.raw"};
  library.openScene(format, 1280, 960);
  open({});
}

function savePicture() {
  byId("picture").toBlob((blob) => {
    const link = document.createElement("a");
    link.href = URL.createObjectURL(blob);
    link.download = `${file.name.replace(/\.[^.]*$/, "")}.png`;
    link.click();
    setTimeout(() => URL.revokeObjectURL(link.href), 1000);
  });
}

function press(event) {
  if (event.target.closest("input, select, pre") || event.ctrlKey || event.metaKey || event.altKey) return;
  const zooms = {"+": view.scale * 2, "=": view.scale * 2, "-": view.scale / 2, 0: 0, 1: 1};
  if (event.key in zooms) view.setZoom(zooms[event.key]);
  else if (event.key === "r" || event.key === "R") byId("reset").click();
}

function listen() {
  const drag = (is) => (event) => { event.preventDefault(); document.body.classList.toggle("dropping", is); };
  addEventListener("dragover", drag(true));
  addEventListener("dragleave", drag(false));
  addEventListener("drop", (event) => {
    drag(false)(event);
    if (event.dataTransfer.files.length > 0) openFile(event.dataTransfer.files[0]);
  });
  byId("open").onchange = (event) => { if (event.target.files.length > 0) openFile(event.target.files[0]); event.target.value = ""; };
  byId("open-label").onkeydown = (event) => { if (event.key === "Enter" || event.key === " ") byId("open").click(); };
  byId("example").onclick = openExample;
  byId("balance-auto").onclick = () => balance();
  byId("reset").onclick = () => { controls.look = {...NEUTRAL, method: controls.look.method}; show(); };
  byId("save").onclick = savePicture;
  addEventListener("keydown", press);
  document.querySelectorAll("[data-copy]").forEach((button) => { button.onclick = () => copyText(button.dataset.copy, button); });
}

async function start() {
  try {
    library = new Library(await loadLibrary());
  } catch (error) {
    report(`This browser cannot run the page: it needs WebAssembly with vectors (${error.message}).`, true);
    return;
  }
  controls = new Controls(library, onChange);
  view = new View(showPixel, balanceAt);
  listen();
  report("Ready. Works without a network.");
}
start();
