// The picture: zoom, the cursor, and clicks.
class View {
  /** @param onPixel called with the pixel under the cursor, onPick with the one that was chosen */
  constructor(onPixel, onPick) {
    this.canvas = byId("picture");
    this.onPixel = onPixel;
    this.onPick = onPick;
    this.zoom = 0;  // 0 fits the width
    this.scale = 1;
    this.at = null;  // the pixel of the cursor
    this.canvas.addEventListener("pointermove", (event) => this.point(event));
    this.canvas.addEventListener("pointerdown", (event) => this.point(event));
    this.canvas.addEventListener("click", (event) => { this.point(event); this.onPick(...this.at); });
    this.canvas.addEventListener("keydown", (event) => this.press(event));
    byId("zoom-fit").onclick = () => this.setZoom(0);
    byId("zoom-one").onclick = () => this.setZoom(1);
    byId("zoom-in").onclick = () => this.setZoom(this.scale * 2);
    byId("zoom-out").onclick = () => this.setZoom(this.scale / 2);
    new ResizeObserver(() => this.place()).observe(byId("scroll"));
  }

  show(image) {
    if (this.canvas.width !== image.width) this.canvas.width = image.width;
    if (this.canvas.height !== image.height) this.canvas.height = image.height;
    this.canvas.getContext("2d").putImageData(image, 0, 0);
    this.place();
  }
  setZoom(zoom) {
    this.zoom = zoom === 0 ? 0 : Math.min(32, Math.max(1 / 16, zoom));
    this.place();
  }
  place() {
    const room = byId("scroll").clientWidth;
    this.scale = this.zoom || Math.min(1, room / this.canvas.width);
    this.canvas.style.width = `${this.canvas.width * this.scale}px`;
    this.canvas.classList.toggle("enlarged", this.scale > 1.5);
    this.mark();
  }
  mark() {
    const cursor = byId("cursor");
    cursor.hidden = !this.at;
    if (!this.at) return;
    cursor.style.left = `${(this.at[0] + 0.5) * this.scale}px`;
    cursor.style.top = `${(this.at[1] + 0.5) * this.scale}px`;
  }
  moveTo(x, y) {
    this.at = [Math.min(this.canvas.width - 1, Math.max(0, x)), Math.min(this.canvas.height - 1, Math.max(0, y))];
    this.mark();
    this.onPixel(...this.at);
  }
  point(event) {
    const box = this.canvas.getBoundingClientRect();
    this.moveTo(Math.floor((event.clientX - box.left) / this.scale), Math.floor((event.clientY - box.top) / this.scale));
  }
  press(event) {
    const [x, y] = this.at || [this.canvas.width >> 1, this.canvas.height >> 1], step = event.shiftKey ? 10 : 1;
    const moves = {ArrowLeft: [-step, 0], ArrowRight: [step, 0], ArrowUp: [0, -step], ArrowDown: [0, step]};
    if (event.key in moves) this.moveTo(x + moves[event.key][0], y + moves[event.key][1]);
    else if (event.key === "Enter" || event.key === " ") this.onPick(x, y);
    else return;
    event.preventDefault();
  }
}
