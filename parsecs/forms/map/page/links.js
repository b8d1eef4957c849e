// Where a node stands, and the link that opens that place, as the program was told to make it.

class Links {
  constructor(tree) {
    this.tree = tree;
    this.template = tree.data.link;
  }

  /** The address of a node's place; empty without a template, and for folders. */
  to(node) {
    const { tree } = this;
    if (this.template === "" || node < 0 || tree.fileOf(node) < 0) return "";
    const path = tree.fullPathOf(node).replace(/^\.\//, "").split("/").map(encodeURIComponent).join("/");
    const parts = { "{path}": path, "{line}": Math.max(1, tree.line[node]), "{column}": Math.max(1, tree.column[node]) };
    return this.template.replace(/\{(path|line|column)\}/g, (name) => parts[name]);
  }

  /** An element with a text: a link if there is one. In a list it is no stop of the Tab key. */
  element(node, className, text) {
    const address = this.to(node);
    const made = element(address === "" ? "span" : "a", className, text);
    if (address === "") return made;
    made.href = address;
    made.tabIndex = -1;
    // An editor takes its addresses from here; a page opens beside this one.
    if (/^https?:/i.test(address)) Object.assign(made, { target: "_blank", rel: "noopener noreferrer" });
    return made;
  }

  /** For a row of a list: the file and the line, or of a file its folder. */
  placeOf(node) {
    const { tree } = this;
    const file = tree.fileOf(node);
    if (file < 0) return [];
    if (file === node) return [this.element(node, "where", oneLine(tree.pathOf(tree.parent[node])) || ".")];
    const line = tree.line[node];
    return [this.element(node, "where", tree.label(file)), this.element(node, "where-line", line > 0 ? `:${line}` : "")];
  }
}
