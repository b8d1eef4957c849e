// A list that has elements only for the rows that are seen.

const ROW = 22; // pixels, as in the style
const TALLEST = 8_000_000; // pixels; browsers lose count of much taller elements
const BEYOND = 8; // rows above and below that are kept

class VirtualList {
  /**
   * `draw` makes the element of a row; `choose` is called with the row that the cursor is on, `open`
   * with the one that was opened.
   */
  constructor(element, { draw, choose, open }) {
    Object.assign(this, { element, draw, choose, open, count: 0, at: -1, rows: new Map() });
    this.space = element.appendChild(document.createElement("div"));
    this.space.className = "space";
    element.addEventListener("scroll", () => this.refresh(), { passive: true });
    element.addEventListener("click", (event) => this.onClick(event, this.choose));
    element.addEventListener("dblclick", (event) => this.onClick(event, this.open));
    element.addEventListener("keydown", (event) => this.onKey(event));
  }

  setCount(count) {
    this.count = count;
    this.at = -1;
    this.space.style.height = `${Math.min(TALLEST, count * ROW)}px`;
    this.space.replaceChildren();
    this.rows.clear();
    this.element.scrollTop = 0;
    this.refresh();
  }

  get seen() {
    return Math.max(1, Math.floor(this.element.clientHeight / ROW));
  }

  /** Pixels of scrolling for a row: fewer than it is high where the list is too tall. */
  get pace() {
    const { clientHeight: height } = this.element;
    // Scrolled to its end the list ends with the last row.
    return this.count * ROW <= TALLEST ? ROW : (TALLEST - height) / (this.count - height / ROW);
  }

  /** Draws the rows that are seen now. Those that stay keep their elements, and so a selection. */
  refresh() {
    const { rows, space } = this;
    const top = this.element.scrollTop; // asked for once: the answer costs a layout after each change
    const { pace } = this;
    const first = Math.floor(top / pace);
    const from = Math.max(0, first - BEYOND);
    const to = Math.min(this.count, first + this.seen + BEYOND);
    for (const [i, row] of rows) {
      if (i >= from && i < to) continue;
      row.remove();
      rows.delete(i);
    }
    let next = null;
    for (let i = to - 1; i >= from; --i) {
      if (!rows.has(i)) rows.set(i, space.insertBefore(this.make(i), next));
      next = rows.get(i);
      next.style.top = `${top + (i - top / pace) * ROW}px`;
      next.setAttribute("aria-selected", i === this.at);
    }
    if (this.at < 0) this.element.removeAttribute("aria-activedescendant");
    else this.element.setAttribute("aria-activedescendant", `${this.element.id}-${this.at}`);
  }

  make(i) {
    const row = this.draw(i);
    row.id = `${this.element.id}-${i}`;
    row.dataset.row = i;
    row.setAttribute("aria-posinset", i + 1);
    row.setAttribute("aria-setsize", this.count);
    return row;
  }

  scrollTo(at) {
    this.element.scrollTop = at * this.pace;
    this.refresh();
  }

  /** Puts the cursor on a row, and the row into sight. */
  moveTo(at) {
    this.at = Math.max(-1, Math.min(this.count - 1, at));
    const top = this.at * this.pace;
    const { scrollTop } = this.element;
    const height = this.seen * this.pace;
    if (top < scrollTop) this.element.scrollTop = top;
    else if (top > scrollTop + height - this.pace) this.element.scrollTop = top - height + 2 * this.pace;
    this.refresh();
  }

  onClick(event, act) {
    const row = event.target.closest("[data-row]");
    // A click on a link is the link's; one that ends a selection of text is none.
    if (row === null || event.target.closest("a") !== null || (act === this.choose && !getSelection().isCollapsed)) return;
    this.at = Number(row.dataset.row);
    this.refresh();
    act(this.at);
  }

  onKey(event) {
    if (event.ctrlKey || event.altKey || event.metaKey) return;
    const steps = { ArrowDown: 1, ArrowUp: -1, PageDown: this.seen, PageUp: -this.seen, Home: -this.count, End: this.count };
    if (event.key in steps) {
      this.moveTo(Math.max(0, this.at + steps[event.key]));
      this.choose(this.at);
    } else if (event.key === "Enter" && this.at >= 0) {
      this.open(this.at);
    } else {
      return;
    }
    event.preventDefault();
  }
}
