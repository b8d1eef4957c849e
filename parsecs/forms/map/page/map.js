// The map on its canvas: drawing, what lies under the pointer, and a cursor for the keyboard.

const FONT = "11px system-ui, sans-serif";
const LETTER = 5.8; // about the width of a letter
const LESS = 0.16; // how much is seen of a box without a hit, while there is a search

class MapView {
  /** `open` is called with a node that shall be zoomed to, `point` with the one under the cursor. */
  constructor(tree, colours, { canvas, cursor, open, point }) {
    Object.assign(this, { tree, colours, canvas, cursor, open, point });
    this.context = canvas.getContext("2d");
    this.root = 0;
    this.hits = null;
    this.at = -1; // the box with the cursor
    canvas.addEventListener("pointermove", (event) => this.moveTo(this.boxAt(event.offsetX, event.offsetY)));
    canvas.addEventListener("pointerleave", () => this.moveTo(-1));
    canvas.addEventListener("click", (event) => this.openBox(this.boxAt(event.offsetX, event.offsetY)));
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
      this.markIncomplete(box);
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
    if (box.rest === null && box.w > 24 && box.h > 13) this.write(box, colours.inkOn(lit ? colours.lit : colour), Math.min(box.h / 2, 9));
    context.globalAlpha = 1;
  }

  /** A corner in the colour of errors of a file of which a part is missing. */
  markIncomplete(box) {
    if (!this.tree.isIncomplete(box.shown) || box.rest !== null) return;
    const { context, colours } = this;
    const side = Math.min(14, box.w, box.h);
    context.fillStyle = colours.roles[ROLE.ERROR];
    context.beginPath();
    context.moveTo(box.x + box.w - 1, box.y);
    context.lineTo(box.x + box.w - 1 - side, box.y);
    context.lineTo(box.x + box.w - 1, box.y + side);
    context.fill();
  }

  write(box, ink, down) {
    const letters = Math.floor((box.w - 8) / LETTER);
    const text = this.labelOf(box);
    this.context.fillStyle = ink;
    this.context.fillText(text.length > letters ? `${text.slice(0, letters - 1)}…` : text, box.x + 4, box.y + down, box.w - 6);
  }

  /** Folders that hold nothing but one another share a box; of types the innermost is told. */
  labelOf(box) {
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

  moveTo(at) {
    if (this.at === at) return;
    this.at = at;
    const box = this.boxes[at];
    this.cursor.hidden = at < 1;
    if (at >= 1) {
      const { style } = this.cursor;
      [style.left, style.top, style.width, style.height] = [box.x, box.y, box.w, box.h].map((length) => `${length}px`);
    }
    this.point(at < 0 ? -1 : box.rest === null ? box.shown : this.tree.parent[box.node]);
  }

  openBox(at) {
    if (at < 0) return;
    const box = this.boxes[at];
    this.open(box.rest === null ? box.shown : this.boxes[box.parent].shown);
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
