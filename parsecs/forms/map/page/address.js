// The place in the page's address: which box is zoomed to, which row is chosen, what was chosen of
// the page, and the search. A node is told by its file and its place in it, so that it outlives
// changes elsewhere.

/** What can be chosen by controls of these names; the first is not in the address. */
const CHOICES = {
  size: ["statements", "lines"],
  colour: ["kind", "nesting", "branches"],
  list: ["contents", "functions", "files", "incomplete"],
  by: ["branches", "nesting", "lines", "statements", "name"],
  order: ["definitions", "alone", "source"],
};

function addressOf(tree, state) {
  const { root, chosen, query, regex } = state;
  const place = new URLSearchParams();
  const file = tree.fileOf(root);
  if (root !== findPlace(tree, null) || chosen >= 0) {
    place.set("at", tree.pathOf(root));
    if (file >= 0 && file !== root) place.set("box", root - file);
    if (file >= 0 && chosen > file && chosen < tree.end[file]) place.set("row", chosen - file);
  }
  for (const [name, values] of Object.entries(CHOICES)) {
    if (state[name] !== values[0]) place.set(name, state[name]);
  }
  if (query !== "") place.set("find", query);
  if (regex) place.set("regex", "1");
  return `#${place}`;
}

/** The state that an address tells; what it does not know is left as it is at the beginning. */
function stateOf(tree, address) {
  const place = new URLSearchParams(address.slice(1));
  const at = findPlace(tree, place.get("at"));
  const within = (name) => {
    const offset = Number.parseInt(place.get(name), 10);
    return offset > 0 && at + offset < tree.end[at] ? at + offset : -1;
  };
  const box = within("box");
  return {
    root: box >= 0 ? box : at,
    chosen: within("row"),
    ...Object.fromEntries(Object.entries(CHOICES).map(([name, values]) => [name, values.find((value) => value === place.get(name)) ?? values[0]])),
    query: place.get("find") ?? "",
    regex: place.get("regex") === "1",
  };
}

/**
 * The folder or file of the path below the root. Without a path it is the whole map, but for folders
 * that hold nothing else than one folder or file.
 */
function findPlace(tree, path) {
  let at = 0;
  if (path === null) {
    while (tree.isPlace(at + 1) && tree.end[at + 1] === tree.end[at]) ++at;
    return at;
  }
  let rest = path;
  while (rest !== "") {
    const slash = rest.indexOf("/");
    const name = slash < 0 ? rest : rest.slice(0, slash);
    const next = tree.children(at).find((node) => tree.isPlace(node) && tree.placeNames[tree.name[node]] === name);
    if (next === undefined) return 0;
    at = next;
    rest = slash < 0 ? "" : rest.slice(slash + 1);
  }
  return at;
}
