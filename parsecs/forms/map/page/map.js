// The map on its canvas: drawing, what lies under the pointer, and a cursor for the keyboard.

const FONT = "11px system-ui, sans-serif";
const LETTER = 5.8; // about the width of a letter
const LESS = 0.16; // how much is seen of a box without a hit, while there is a search

class MapView {
  /**
   * `open` is called with a node that shall be zoomed to, `point` with the one under the cursor, and
   * how many of the smallest beside it share its box.
   */
  constructor(tree, colours, { canvas, cursor, spot, open, point }) {
    Object.assign(this, { tree, colours, canvas, cursor, spot, open, point });
    this.context = canvas.getContext("2d");
    this.root = 0;
    this.hits = null;
    this.at = -1; // the box with the cursor, which is what a click opens
    canvas.addEventListener("pointermove", ({ offsetX: x, offsetY: y }) => this.moveTo(this.targetAt(x, y), this.boxAt(x, y)));
    canvas.addEventListener("pointerleave", () => this.moveTo(-1));
    canvas.addEventListener("click", ({ offsetX: x, offsetY: y }) => this.openBox(this.targetAt(x, y)));
    canvas.addEventListener("keydown", (event) => this.onKey(event));
  }

  /** Lays the map out anew and draws it. */
  show(root) {
    this.root = root;
    const { clientWidth: width, clientHeight: height } = this.canvas;
    // Numbers are those of whole functions.
    const closed = this.colours.by === "kind" ? [] : [ROLE.FUNCTION, ROLE.VARIABLE];
    this.boxes = layOut(this.tree, root, width, height, closed);
    this.size = `${width} ${height}`;
    this.moveTo(-1);
    this.draw();
  }

  /** The size of the canvas may have changed. */
  refit() {
    const { clientWidth: width, clientHeight: height } = this.canvas;
    if (this.size !== `${width} ${height}`) this.show(this.root);
  }

  draw() {
    const { canvas, context, colours } = this;
    const { clientWidth: width, clientHeight: height } = canvas;
    const ratio = window.devicePixelRatio || 1;
    canvas.width = Math.round(width * ratio);
    canvas.height = Math.round(height * ratio);
    context.setTransform(ratio, 0, 0, ratio, 0, 0);
    context.font = FONT;
    context.textBaseline = "middle";
    context.fillStyle = colours.ground;
    context.fillRect(0, 0, width, height);
    for (const box of this.boxes) {
      if (box.open) this.drawOpen(box);
      else this.drawClosed(box);
      this.markLack(box);
    }
  }

  drawOpen(box) {
    const { context, colours, tree } = this;
    const role = colours.by === "kind" ? tree.role[box.shown] : ROLE.FOLDER;
    context.fillStyle = colours.open[role];
    context.fillRect(box.x, box.y, box.w - 1, box.h - 1);
    // What it says itself may be a hit, whatever is in it.
    const lit = this.hits !== null && this.hits.has(box.shown);
    if (lit || (box.w > 12 && box.h > 12)) {
      context.strokeStyle = lit ? colours.lit : colours.roles[role];
      context.strokeRect(box.x + 0.5, box.y + 0.5, box.w - 2, box.h - 2);
    }
    if (lit && box.head > 0) {
      context.fillStyle = colours.lit;
      context.fillRect(box.x, box.y, box.w - 1, box.head);
    }
    if (box.head > 0) this.write(box, lit ? colours.inkOn(colours.lit) : colours.ink, HEAD / 2 + 1);
  }

  drawClosed(box) {
    const { context, colours, tree } = this;
    const colour = colours.of(tree, box.shown);
    const lit = this.hits !== null && (box.rest ?? [box.node]).some((node) => this.hits.areIn(node, tree));
    context.globalAlpha = this.hits === null || lit ? 1 : LESS;
    context.fillStyle = lit ? colours.lit : colour;
    const seam = box.w > 2.5 && box.h > 2.5 ? 1 : 0.4;
    context.fillRect(box.x, box.y, box.w - seam, box.h - seam);
    if (hasLabel(box)) this.write(box, colours.inkOn(lit ? colours.lit : colour), Math.min(box.h / 2, 9));
    context.globalAlpha = 1;
  }

  /** A corner for what is missing in a file: on the file, or on a closed box that holds it. */
  markLack(box) {
    const { context, colours, tree } = this;
    if (box.open && tree.role[box.shown] !== ROLE.FILE) return;
    const lacks = (box.rest ?? [box.shown]).map((node) => tree.lackIn(node));
    const stop = lacks.includes("stop");
    if (!stop && !lacks.includes("cut")) return;
    const side = Math.min(stop ? 14 : 9, box.w - 1, box.h - 1);
    context.fillStyle = stop ? colours.stop : colours.cut;
    context.strokeStyle = colours.ground;
    context.beginPath();
    context.moveTo(box.x + box.w - 1, box.y);
    context.lineTo(box.x + box.w - 1 - side, box.y);
    context.lineTo(box.x + box.w - 1, box.y + side);
    context.closePath();
    context.stroke();
    context.fill();
  }

  write(box, ink, down) {
    this.context.fillStyle = ink;
    box.short ??= this.shortLabelOf(box);
    this.context.fillText(box.short, box.x + 4, box.y + down, box.w - 6);
  }

  shortLabelOf(box) {
    const letters = Math.floor((box.w - 8) / LETTER);
    const whole = this.labelOf(box);
    if (box.rest !== null && whole.length > letters) return ""; // a number must be whole
    const label = whole.length > letters ? whole.replace(/\.cs$/, "") : whole;
    const shared = label.length <= letters || box.parent < 0 ? "" : this.sharedIn(this.boxes[box.parent]);
    return shorten(label, letters, shared, this.tree.isPlace(box.shown) || this.tree.name[box.shown] >= 0);
  }

  /** What the labels in a box have in common. */
  sharedIn(box) {
    const inside = () => this.boxes.slice(box.first, box.first + box.count).filter((inner) => inner.head > 0 || hasLabel(inner));
    return (box.shared ??= sharedStart(inside().map((inner) => this.labelOf(inner))));
  }

  /** Folders that hold nothing but one another share a box; of types the innermost is told. */
  labelOf(box) {
    if (box.rest !== null) return `${box.rest.length.toLocaleString("en")} more`;
    let label = this.tree.label(box.shown);
    if (!this.tree.isPlace(box.node)) return label;
    for (let node = box.shown; node !== box.node; ) {
      node = this.tree.parent[node];
      label = `${this.tree.label(node)}/${label}`;
    }
    return label;
  }

  /** The innermost box there: of two that hold a point, the later one lies in the other. */
  boxAt(x, y) {
    return this.boxes.findLastIndex((box) => x >= box.x && y >= box.y && x < box.x + box.w && y < box.y + box.h);
  }

  /** One level down, or all of the box whose label is there. */
  targetAt(x, y) {
    let at = this.boxAt(x, y);
    if (at > 0 && this.boxes[at].head > 0 && y < this.boxes[at].y + HEAD) return at;
    while (at > 0 && this.boxes[at].parent > 0) at = this.boxes[at].parent;
    return at;
  }

  /** Puts the cursor on a box, and tells of one in it. */
  moveTo(at, told = at) {
    if (this.at === at && this.told === told) return;
    [this.at, this.told] = [at, told];
    frame(this.cursor, at < 1 ? undefined : this.boxes[at]);
    frame(this.spot, told === at ? undefined : this.boxes[told]);
    const inner = this.boxes[told];
    this.point(inner?.shown ?? -1, inner?.rest?.length ?? 1);
  }

  openBox(at) {
    if (at > 0) this.open(this.boxes[at].shown);
  }

  onKey(event) {
    if (event.ctrlKey || event.altKey || event.metaKey) return;
    if (event.key === "Enter") this.openBox(this.at);
    else if (event.key === "ArrowDown") this.moveIn();
    else if (event.key === "ArrowUp") this.moveTo(Math.max(0, this.boxes[this.at]?.parent ?? 0));
    else if (event.key === "ArrowRight") this.moveAside(1);
    else if (event.key === "ArrowLeft") this.moveAside(-1);
    else return;
    event.preventDefault();
  }

  moveIn() {
    const from = Math.max(0, this.at);
    const inner = this.boxes.findIndex((box) => box.parent === from);
    if (inner >= 0) this.moveTo(inner);
  }

  /** Boxes with the same parent follow one another. */
  moveAside(by) {
    if (this.at < 1) return this.moveIn();
    const next = this.boxes[this.at + by];
    if (next !== undefined && next.parent === this.boxes[this.at].parent) this.moveTo(this.at + by);
  }
}

function hasLabel(box) {
  return !box.open && box.w > 24 && box.h > 13;
}

/** Puts an element where a box is; hides it without one. */
function frame(element, box) {
  element.hidden = box === undefined;
  if (box === undefined) return;
  const { style } = element;
  [style.left, style.top, style.width, style.height] = [box.x, box.y, box.w, box.h].map((length) => `${length}px`);
}
