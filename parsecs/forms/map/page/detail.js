// A function, a file or a folder as nested boxes in the order of the source.

const MOST_BOXES = 20; // levels that are drawn; deeper ones are counted
const INDENT = 12; // pixels a level
const MOST_SHOWN = 20_000; // letters of a whole text; a line of a million takes seconds to lay out

class Detail {
  /**
   * `choose` is called with a node, `open` with one that shall be zoomed to, `rank` for the functions
   * with the most branches.
   */
  constructor(tree, links, { choose, open, rank }) {
    Object.assign(this, { tree, links, rank, nodes: new Int32Array(0) });
    this.list = new VirtualList(document.getElementById("boxes"), {
      draw: (i) => this.draw(i),
      choose: (i) => {
        this.showText(this.nodes[i]);
        choose(this.nodes[i]);
      },
      open: (i) => open(this.nodes[i]),
    });
    const onClick = (id, text) => {
      const button = document.getElementById(id);
      button.addEventListener("click", () => copy(button, text()));
    };
    onClick("copy", () => document.getElementById("path").textContent);
    onClick("copy-text", () => this.indented());
  }

  show(root, chosen, size) {
    const { tree } = this;
    if (root !== this.root || size !== this.size) {
      [this.root, this.size] = [root, size];
      this.nodes = nodesToList(tree, root);
      this.list.setCount(this.nodes.length);
    }
    const mark = MARKS[tree.role[root]];
    document.getElementById("name").textContent = `${mark} ${tree.label(root)}`;
    document.getElementById("facts").replaceChildren(...factsOf(tree, root).flatMap((fact, i) => [i > 0 ? " · " : "", this.followed(fact)]));
    this.showText(chosen >= 0 ? chosen : tree.isPlace(root) ? -1 : root);
    if (chosen >= 0) this.list.moveTo(this.nodes.indexOf(chosen));
  }

  /** The one fact that asks for a list is a button. */
  followed(fact) {
    if (fact !== mostBranches(this.tree, this.root)) return fact;
    const button = element("button", "", fact);
    button.type = "button";
    button.addEventListener("click", this.rank);
    return button;
  }

  showText(node) {
    const text = document.getElementById("text");
    text.hidden = node < 0 || this.tree.isPlace(node);
    const whole = text.hidden ? "" : this.tree.wholeText(node);
    text.textContent = visible(whole.slice(0, MOST_SHOWN));
    if (whole.length > MOST_SHOWN) text.append(`… (${counted(whole.length, "letter")} in all)`);
    const place = node >= 0 ? node : this.root;
    document.getElementById("path").textContent = placeOf(this.tree, place);
    const link = document.getElementById("open");
    const opener = this.links.element(place, "button", "Open");
    opener.hidden = opener.href === undefined;
    opener.removeAttribute("tabindex");
    opener.id = "open";
    link.replaceWith(opener);
  }

  /** All rows as text. */
  indented() {
    const { tree, root } = this;
    const lines = Array.from(this.nodes, (node) => {
      const depth = Math.min(tree.depth[node] - tree.depth[root], MOST_BOXES);
      return "    ".repeat(depth) + tree.wholeText(node);
    });
    return [tree.wholeText(root), ...lines].join("\n");
  }

  draw(i) {
    const { tree } = this;
    const node = this.nodes[i];
    const row = element("div", "row");
    row.setAttribute("role", "treeitem");
    const depth = tree.depth[node] - tree.depth[this.root];
    row.setAttribute("aria-level", depth);
    const number = this.numberOf(node);
    row.append(tree.isPlace(node) ? element("span", "line", number) : this.links.element(node, "line", number));
    const indent = this.addBoxes(row, i, depth);
    const content = row.appendChild(element("span", `content is-${ROLES[tree.role[node]]}`));
    content.style.marginLeft = `${indent}px`;
    content.append(markOf(tree, node));
    if (depth > MOST_BOXES) content.append(element("span", "depth", `level ${depth}`));
    content.append(element("span", "text", this.textOf(node)));
    if (tree.role[node] === ROLE.FILE) row.append(...lacksOf(tree, node));
    return row;
  }

  /** Its line, or of a folder or a file how large it is. */
  numberOf(node) {
    const { tree } = this;
    if (tree.isPlace(node)) return tree.weight[node].toLocaleString("en");
    return tree.line[node] > 0 ? tree.line[node] : "";
  }

  textOf(node) {
    if (this.tree.isPlace(node)) return this.tree.label(node);
    return oneLine(this.tree.wholeText(node).slice(0, MOST_LETTERS));
  }

  /** The part of each box that crosses the row, outermost first. Returns where the content begins. */
  addBoxes(row, i, depth) {
    const { tree, nodes } = this;
    const levels = Math.min(depth, MOST_BOXES);
    let node = nodes[i];
    const follows = i + 1 < nodes.length ? nodes[i + 1] : tree.count;
    const boxes = [];
    for (let level = levels; level > 0; --level, node = tree.parent[node]) {
      const inside = nodes[i] !== node || follows < tree.end[node];
      if (!inside) continue;
      const box = element("span", `box is-${ROLES[tree.role[node]]}`);
      if (node === nodes[i]) box.classList.add("first");
      if (follows >= tree.end[node]) box.classList.add("last");
      box.style.left = `calc(var(--gutter) + ${(level - 1) * INDENT}px)`;
      box.style.right = `${(level - 1) * 3 + 4}px`;
      boxes.push(box);
    }
    row.append(...boxes.reverse());
    return levels * INDENT - 4;
  }
}

async function copy(button, text) {
  const label = button.textContent;
  try {
    await navigator.clipboard.writeText(text);
    button.textContent = "Copied";
  } catch {
    button.textContent = "Not allowed";
  }
  button.disabled = true;
  setTimeout(() => {
    button.textContent = label;
    button.disabled = false;
  }, 1500);
}

function element(name, className, text = "") {
  const made = document.createElement(name);
  made.className = className;
  made.textContent = text;
  return made;
}

/** The mark of what it is, with the word for who cannot see it. */
function markOf(tree, node) {
  const mark = element("span", "mark", MARKS[tree.role[node]]);
  mark.setAttribute("role", "img");
  mark.setAttribute("aria-label", ROLES[tree.role[node]]);
  return mark;
}

/** All below a file or what lies in one; of a folder only the folders and files. */
function nodesToList(tree, root) {
  const { role, end } = tree;
  const nodes = new Int32Array(end[root] - root - 1);
  if (role[root] !== ROLE.FOLDER) return nodes.map((_, i) => root + 1 + i);
  let count = 0;
  for (let i = root + 1; i < end[root]; i = role[i] === ROLE.FILE ? end[i] : i + 1) nodes[count++] = i;
  return nodes.slice(0, count);
}

const counted = (number, one, many = `${one}s`) => `${number.toLocaleString("en")} ${number === 1 ? one : many}`;

function factsOf(tree, node) {
  const facts = [tree.kindOf(node)];
  const { [node]: first } = tree.line;
  const { [node]: last } = tree.lastLine;
  if (first > 0) facts.push(first === last ? `line ${first}` : `lines ${first} to ${last}`);
  else facts.push(counted(tree.lines[node], "line"));
  facts.push(counted(tree.size[node], "statement"));
  if (holdsFunctions(tree.role[node])) facts.push(mostBranches(tree, node));
  else facts.push(counted(tree.branches[node], "branch", "branches"));
  facts.push(`nesting ${tree.nesting[node]}`);
  facts.push(...tree.lacksOf(node));
  return facts;
}

const mostBranches = (tree, node) => `at most ${counted(tree.branches[node], "branch", "branches")} in a function`;

/** Path and line, as editors take them. */
function placeOf(tree, node) {
  const path = oneLine(tree.fullPathOf(node)) || ".";
  return tree.line[node] > 0 ? `${path}:${tree.line[node]}` : path;
}
