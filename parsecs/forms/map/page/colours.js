// Colours of the map, from the style, which has them for light and dark and for the colour-blind.

const STEPS = {
  nesting: { from: [0, 1, 2, 3, 4, 5], name: "Loops and branches in one another" },
  branches: { from: [0, 1, 3, 6, 11, 21], name: "Loops and branches in a function" },
};
const LEGEND = ["type", "function", "variable", "branch", "loop", "call", "statement", "block", "define", "error", "file", "folder"];
const SAID = { file: "closed file", folder: "closed folder" };

class Colours {
  constructor() {
    this.by = "kind";
    this.read();
  }

  /** Anew, when the system changes between light and dark. */
  read() {
    const style = getComputedStyle(document.documentElement);
    const colour = (name) => style.getPropertyValue(`--${name}`).trim();
    this.roles = ROLES.map(colour);
    this.steps = STEPS.nesting.from.map((_, i) => colour(`step-${i}`));
    [this.ground, this.ink, this.lit, this.stop, this.cut] = ["ground", "ink", "lit", "stop", "cut"].map(colour);
    this.open = this.roles.map((role) => mix(role, this.ground, 0.22));
  }

  /** Of a box that shows nothing inside. */
  of(tree, node) {
    if (this.by === "kind") return this.roles[tree.role[node]];
    const value = this.by === "nesting" ? tree.nesting[node] + tree.step[node] : tree.branches[node];
    return this.steps[this.stepOf(value)];
  }

  stepOf(value) {
    return STEPS[this.by].from.findLastIndex((from) => from <= value);
  }

  /** Black or white, whichever is easier to read on the colour. */
  inkOn(colour) {
    const [r, g, b] = partsOf(colour).map((part) => (part / 255) ** 2.2);
    return 0.2126 * r + 0.7152 * g + 0.0722 * b > 0.2 ? "#000000" : "#ffffff";
  }

  showLegend(list, tree) {
    const title = element("li", "", this.by === "kind" ? "Kinds:" : `${STEPS[this.by].name}:`);
    const lacks = new Set(tree.incomplete.length > 0 ? Array.from(tree.incomplete, (file) => tree.lackIn(file)) : []);
    const items = this.by === "kind"
      ? LEGEND.map((name) => [this.roles[ROLE[name.toUpperCase()]], `${MARKS[ROLE[name.toUpperCase()]]} ${SAID[name] ?? name}`])
      : this.steps.map((colour, i) => [colour, this.rangeOf(i)]);
    if (lacks.has("stop")) items.push([this.stop, "file that stopped early", "corner"]);
    if (lacks.has("cut")) items.push([this.cut, "file without a branch of #if", "corner"]);
    list.replaceChildren(title, ...items.map(([colour, text, shape]) => {
      const item = element("li", "");
      const swatch = item.appendChild(element("span", `swatch ${shape ?? ""}`));
      swatch.style.backgroundColor = colour;
      item.append(text);
      return item;
    }));
  }

  rangeOf(i) {
    const { from } = STEPS[this.by];
    if (i + 1 === from.length) return `${from[i]} or more`;
    return from[i + 1] - 1 === from[i] ? `${from[i]}` : `${from[i]} to ${from[i + 1] - 1}`;
  }
}

/** Red, green and blue of #rrggbb. */
function partsOf(colour) {
  return [1, 3, 5].map((i) => parseInt(colour.slice(i, i + 2), 16));
}

function mix(colour, ground, part) {
  const below = partsOf(ground);
  return `rgb(${partsOf(colour).map((value, i) => Math.round(value * part + below[i] * (1 - part))).join(" ")})`;
}
