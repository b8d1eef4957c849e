// The place in the page's address: which box is zoomed to, which row is chosen, the colour and the
// search. A node is told by its file and its place in it, so that it outlives changes elsewhere.

function addressOf(tree, { root, chosen, colour, query, regex }) {
  const place = new URLSearchParams();
  const file = tree.fileOf(root);
  if (root !== findPlace(tree, null) || chosen >= 0) {
    place.set("at", tree.pathOf(root));
    if (file >= 0 && file !== root) place.set("box", root - file);
    if (file >= 0 && chosen > file && chosen < tree.end[file]) place.set("row", chosen - file);
  }
  if (colour !== "kind") place.set("colour", colour);
  if (query !== "") place.set("find", query);
  if (regex) place.set("regex", "1");
  return `#${place}`;
}

/** The state that an address tells; what it does not know is left as it is at the beginning. */
function stateOf(tree, address) {
  const place = new URLSearchParams(address.slice(1));
  const colour = place.get("colour");
  const at = findPlace(tree, place.get("at"));
  const within = (name) => {
    const offset = Number.parseInt(place.get(name), 10);
    return offset > 0 && at + offset < tree.end[at] ? at + offset : -1;
  };
  const box = within("box");
  return {
    root: box >= 0 ? box : at,
    chosen: within("row"),
    colour: Object.hasOwn(STEPS, colour) ? colour : "kind",
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
