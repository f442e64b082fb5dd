// Counts under the cursor, the histogram, and the drawing of the bits.
function pixelText(library, x, y) {
  const samples = library.samples(x, y).map(({name, count}) => `${name === "p" ? "value" : name} ${count}`);
  return `(${x}, ${y})  ${samples.join("  ")}`;
}

/** Square roots of the numbers, so that small ones are seen beside large ones. */
function drawHistogram(channels) {
  const canvas = byId("histogram"), context = canvas.getContext("2d"), {width, height} = canvas;
  const style = getComputedStyle(document.documentElement);
  const colors = {R: "--red", G: "--green", B: "--blue", U: "--blue", V: "--red"};
  const most = Math.max(1, ...channels.flatMap((channel) => channel.parts));
  context.clearRect(0, 0, width, height);
  context.lineWidth = 1.5;
  for (const {name, parts} of channels) {
    context.strokeStyle = style.getPropertyValue(colors[name] || "--gray");
    context.beginPath();
    parts.forEach((count, i) => context.lineTo((i + 0.5) * width / parts.length, height - 2 - Math.sqrt(count / most) * (height - 6)));
    context.stroke();
  }
}

const runOf = (bit) => bit.split(".")[0];

/** Neighbouring bits of one sample share a cell, as on the page of all formats. */
function bitRow(byte, i) {
  const row = document.createElement("tr"), head = document.createElement("th");
  head.textContent = `byte ${i}`;
  head.scope = "row";
  row.append(head);
  for (let from = 0; from < 8;) {
    let end = from + 1;
    while (end < 8 && runOf(byte[end]) === runOf(byte[from])) ++end;
    const cell = document.createElement("td"), name = runOf(byte[from]);
    cell.colSpan = end - from;
    if (name === "-") {
      cell.className = "unused";
      cell.textContent = "unused";
    } else {
      const [high, low] = [byte[from], byte[end - 1]].map((bit) => bit.split(".")[1]);
      cell.className = `${name[0]}${Number(name.slice(1)) % 2 ? " odd" : ""}`;
      cell.textContent = high === low ? `${name} ${high}` : `${name} ${high}-${low}`;
    }
    row.append(cell);
    from = end;
  }
  return row;
}

function drawBits(library, format) {
  const {words, planes} = library.bits(format.type), title = document.createElement("h2"), text = document.createElement("p");
  title.textContent = `${format.name} in memory`;
  text.textContent = `${words}. Bits 7 to 0 of each byte, in the order of their addresses.`;
  byId("bits").replaceChildren(title, text, ...planes.map((bytes, plane) => {
    const box = document.createElement("div"), table = document.createElement("table"), head = document.createElement("tr");
    box.className = "scroll";
    head.append(...["", 7, 6, 5, 4, 3, 2, 1, 0].map((bit) => Object.assign(document.createElement("th"), {textContent: bit})));
    if (planes.length > 1) head.firstChild.textContent = `plane ${plane}`;
    table.append(head, ...bytes.map(bitRow));
    box.append(table);
    return box;
  }));
}
