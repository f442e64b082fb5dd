// Lines that do the same on the command line, in C++ and in Python.
const FLAG_NAMES = {16: "kBayerGR", 32: "kBayerGB", 64: "kBayerRG", 128: "kBayerBG", 16384: "kFullRange", 32768: "kBT709"};
const METHOD_FLAGS = {adaptive: "kAdaptive", mhc: "kGradientCorrected", bilinear: "kBilinear", half: "kHalfSize", block: "kNone"};
const TONES = [{name: "linear", kind: "kLinear"}, {name: "srgb", kind: "kSRGB"}, {name: "bt709", kind: "kBT709"}, {kind: "kGamma"}];

const quotedForShell = (name) => /^[\w.\/-]+$/.test(name) && !name.startsWith("-") ? name : `'${name.replaceAll("'", "'\\''")}'`;
const hex = (type) => `0x${type.toString(16).toUpperCase()}`;
const isBalanced = (look) => look.gains.some((gain) => gain !== 1) || look.exposure !== 0;
const triple = (value) => `{${value}, ${value}, ${value}}`;

function shellRecipe(name, frame, look, method) {
  const source = quotedForShell(name);
  let text = `picture.png --from ${frame.format.argument} --size ${frame.width}x${frame.height}`;
  if (frame.lineSize) text += ` --line-size ${frame.lineSize}`;
  if (frame.format.kind === "mosaic") text += ` --demosaic ${method}`;
  if (look.black) text += ` --black ${look.black}`;
  if (isBalanced(look)) text += ` --gain ${gainsWithExposure(look).join(",")}`;
  if (look.tone) text += ` --tone ${TONES[look.tone].name || look.gamma}`;
  // The tool reads frames from the beginning of a file.
  return frame.offset ? `tail -c +${frame.offset + 1} ${source} | lmimaging convert - ${text}` : `lmimaging convert ${source} ${text}`;
}

/** Gray frames become three equal colours on the way. */
function cppRecipe(frame, look, method) {
  const {format} = frame, half = format.kind === "mosaic" && method === "half" ? " / 2" : "";
  const flags = Object.entries(FLAG_NAMES).filter(([flag]) => format.flags & flag).map(([, flag]) => `ConversionFlags::${flag}`);
  const source = `{${hex(format.type)}, data${frame.offset ? ` + ${frame.offset}` : ""}, size${frame.offset ? ` - ${frame.offset}` : ""}, width, height${frame.lineSize ? `, ${frame.lineSize}` : ""}}`;
  const lines = [
    "RegisterExtendedFormats();",
    `const unsigned long width = ${frame.width}, height = ${frame.height};`];
  const isGray = format.kind === "gray", step = isGray ? 2 ** (16 - format.bits) : 1;
  if (isGray) {
    lines.push("std::vector<unsigned short> words(3 * width * height);",
      `ConvertImage(${source}, {0x20004, words.data(), 2 * words.size(), width, height});`);
  }
  lines.push("DevelopmentSettings settings;");
  if (look.black) lines.push(`settings.black = ${triple(look.black * step)};`);
  if (isBalanced(look)) lines.push(`settings.gains = {${gainsWithExposure(look).join(", ")}};`);
  if (format.kind === "mosaic") lines.push(`settings.method = ConversionFlags::${METHOD_FLAGS[method]};`);
  lines.push(`settings.tone = {ToneCurve::${TONES[look.tone].kind}${look.tone === 3 ? `, ${look.gamma}` : ""}};`,
    "Development development;",
    "Development::Make(settings, development);",
    `std::vector<unsigned char> rgb(3 * ${half ? "(width / 2) * (height / 2)" : "width * height"});`,
    `const ConversionResult result = Develop(development, ${isGray ? "{0x20004, words.data(), 2 * words.size(), width, height}" : source},`,
    `                                        {0x420002, rgb.data(), rgb.size(), width${half}, height${half}}${flags.length ? `, {${flags.join(" | ")}}` : ""});`,
    "if (!result.IsOK()) std::puts(result.message.c_str());");
  return lines.join("\n");
}

function pythonRecipe(name, frame, look, method) {
  const [type, option, layout] = frame.format.argument.split(" ");
  const options = [`size=(${frame.width}, ${frame.height})`];
  if (option) options.push(`bayer="${layout}"`);
  if (frame.lineSize) options.push(`line_size=${frame.lineSize}`);
  if (frame.format.kind === "mosaic") options.push(`demosaic="${method}"`);
  if (look.black) options.push(`black=${look.black}`);
  if (isBalanced(look)) options.push(`gains=(${gainsWithExposure(look).join(", ")})`);
  if (look.tone) options.push(`tone=${TONES[look.tone].name ? `"${TONES[look.tone].name}"` : look.gamma}`);
  return ["import lmimaging, numpy as np", "from PIL import Image",
    `frame = np.fromfile(${JSON.stringify(name)}, np.uint8${frame.offset ? `, offset=${frame.offset}` : ""})`,
    `rgb = lmimaging.convert(frame, ${type.startsWith("0x") ? type : `"${type}"`}, "RGB8", ${options.join(", ")})`,
    "Image.fromarray(rgb).show()"].join("\n");
}

function showRecipes(name, frame, look, method) {
  byId("recipe-shell").textContent = shellRecipe(name, frame, look, method);
  byId("recipe-cpp").textContent = cppRecipe(frame, look, method);
  byId("recipe-python").textContent = pythonRecipe(name, frame, look, method);
}

/** Pages from a file may have no clipboard; then the text is selected for the keyboard. */
async function copyText(id, button) {
  try {
    await navigator.clipboard.writeText(byId(id).textContent);
    button.textContent = "Copied";
  } catch {
    getSelection().selectAllChildren(byId(id));
    button.textContent = document.execCommand("copy") ? "Copied" : "Selected";
  }
  setTimeout(() => { button.textContent = "Copy"; }, 1500);
}
