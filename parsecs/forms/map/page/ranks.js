// The functions or the files of a folder, by a measure; or the files of which a part is missing.

const MEASURES = {
  branches: (tree) => tree.branches,
  nesting: (tree) => tree.nesting,
  lines: (tree) => tree.lines,
  statements: (tree) => tree.size,
};

class Ranks {
  /** `choose` is called with a node that shall be zoomed to. */
  constructor(tree, links, { choose }) {
    Object.assign(this, { tree, links, nodes: [], folder: 0, told: "" });
    const act = (i) => choose(this.nodes[i]);
    this.list = new VirtualList(document.getElementById("ranks"), { draw: (i) => this.draw(i), choose: act, open: act });
  }

  show(root, kind, by) {
    this.kind = kind;
    this.folder = this.folderFor(root);
    const told = `${kind} ${by} ${this.folder}`;
    if (told === this.told) return; // the cursor stays
    this.told = told;
    this.nodes = this.find(kind, by);
    this.list.setCount(this.nodes.length);
    const whose = this.tree.label(this.folder);
    document.getElementById("ranked").textContent = `${counted(this.nodes.length, kind === "functions" ? "function" : "file")} in ${whose}`;
  }

  /** The list stays what it was when one of it is zoomed to. */
  folderFor(root) {
    const { tree, folder } = this;
    if (tree.role[root] === ROLE.FOLDER) return root;
    return root > folder && root < tree.end[folder] ? folder : tree.parent[tree.fileOf(root)];
  }

  find(kind, by) {
    const { tree, folder } = this;
    const role = kind === "functions" ? ROLE.FUNCTION : ROLE.FILE;
    const nodes = [];
    if (kind === "incomplete") {
      return tree.incomplete.filter((node) => node > folder && node < tree.end[folder]);
    }
    for (let i = folder; i < tree.end[folder]; ++i) {
      if (tree.role[i] === role) nodes.push(i);
    }
    return by === "name" ? this.byName(nodes) : largestFirst(nodes, MEASURES[by](tree));
  }

  byName(nodes) {
    const named = nodes.map((node) => ({ node, name: this.tree.label(node) }));
    named.sort((a, b) => (a.name < b.name ? -1 : a.name > b.name ? 1 : a.node - b.node));
    return named.map(({ node }) => node);
  }

  draw(i) {
    const { tree } = this;
    const node = this.nodes[i];
    const row = element("div", `row ranked ${ROLES[tree.role[node]]}`);
    row.setAttribute("role", "option");
    if (this.kind !== "incomplete") {
      for (const [name, of] of Object.entries(MEASURES)) {
        const cell = row.appendChild(element("span", `number ${name}`, of(tree)[node].toLocaleString("en")));
        cell.setAttribute("aria-label", `${cell.textContent} ${name}`);
      }
    }
    const content = row.appendChild(element("span", `content is-${ROLES[tree.role[node]]}`));
    content.append(markOf(tree, node), element("span", "text", nameIn(tree, node)));
    if (tree.role[node] === ROLE.FILE) row.append(...lacksOf(tree, node));
    row.append(...this.links.placeOf(node));
    return row;
  }
}

/** A function with its type: many have the same name. */
function nameIn(tree, node) {
  let above = tree.parent[node];
  while (above >= 0 && !tree.isPlace(above) && tree.role[above] !== ROLE.TYPE) above = tree.parent[above];
  const inType = above >= 0 && !tree.isPlace(above) && !tree.isPlace(node);
  return inType ? `${tree.label(above)}.${tree.label(node)}` : tree.label(node);
}

/** For a row of a list: what the file lacks. */
function lacksOf(tree, file) {
  const lacks = tree.lacksOf(file).join("; ");
  return lacks === "" ? [] : [element("span", `lack is-${tree.lackIn(file)}`, `◥ ${lacks}`)];
}
