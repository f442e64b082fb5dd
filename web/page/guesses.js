// The ranked guesses as thumbnails.
const THUMBNAIL = {width: 312, height: 208};

const sizeText = (frame) => `${frame.width} × ${frame.height}`;

/** A mosaic is dark and green before it is balanced; a thumbnail shows it as eyes expect it. */
function thumbnailLook(library, frame) {
  const look = {...NEUTRAL, method: 65536, tone: frame.format.kind === "mosaic" ? 1 : 0};
  if (frame.format.kind !== "mosaic") return look;
  library.read(frame, look);
  try {
    return {...look, gains: library.balance()};
  } catch {
    return look;
  }
}

function drawThumbnail(library, frame, canvas) {
  library.read(frame, thumbnailLook(library, frame));
  const image = library.develop();
  const whole = new OffscreenCanvas(image.width, image.height);
  whole.getContext("2d").putImageData(image, 0, 0);
  const scale = Math.min(1, THUMBNAIL.width / image.width, THUMBNAIL.height / image.height);
  canvas.width = Math.max(1, Math.round(image.width * scale));
  canvas.height = Math.max(1, Math.round(image.height * scale));
  const context = canvas.getContext("2d");
  context.imageSmoothingQuality = "high";
  context.drawImage(whole, 0, 0, canvas.width, canvas.height);
}

/** Shows the guesses; `choose` is called with the one that is pressed. */
function showGuesses(library, guesses, choose) {
  const list = byId("guesses");
  list.hidden = guesses.length === 0;
  list.replaceChildren(...guesses.map((guess, i) => {
    const button = document.createElement("button");
    button.type = "button";
    button.className = "guess";
    button.setAttribute("aria-pressed", "false");
    const canvas = document.createElement("canvas"), name = document.createElement("b"), size = document.createElement("span");
    name.textContent = `${i + 1}. ${guess.format.name}`;
    name.title = guess.format.name;
    size.textContent = sizeText(guess);
    button.append(canvas, name, size);
    button.onclick = () => choose(guess);
    try {
      drawThumbnail(library, guess, canvas);
    } catch (error) {
      size.textContent = error.message;
    }
    return button;
  }));
}

function markGuess(guesses, frame) {
  [...byId("guesses").children].forEach((button, i) => {
    const is = guesses[i].format === frame.format && guesses[i].width === frame.width && guesses[i].height === frame.height;
    button.setAttribute("aria-pressed", String(is));
  });
}
