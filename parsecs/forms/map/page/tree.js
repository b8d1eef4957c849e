// The code base as one tree: folders, files and rows in the order of the source, each node a place
// in columns of numbers. No object a node, no recursion: a million nodes are loaded in a second.

/** The order is that of MapRole, and of what the page adds. The names are the style's too. */
const ROLES = ["type", "function", "variable", "branch", "loop", "call", "statement", "block", "define", "symbols", "error", "folder", "file"];
const ROLE = Object.fromEntries(ROLES.map((name, i) => [name.toUpperCase(), i]));
const MARKS = ["▣", "ƒ", "▪", "◆", "↻", "↗", "·", "▢", "#", "⚑", "✖", "▤", "≡"];

/** What a row declares, in the order of Declares, and the role of each. */
const DECLARES = ["", "namespace", "class", "struct", "interface", "enum", "record", "delegate", "method", "constructor", "destructor", "property", "indexer", "event", "field", "operator", "conversion", "enumerator", "local"];
const ROLE_OF = DECLARES.map((name) => {
  if (["property", "indexer", "event", "field", "enumerator"].includes(name)) return ROLE.VARIABLE;
  return ["method", "constructor", "destructor", "operator", "conversion", "local"].includes(name) ? ROLE.FUNCTION : ROLE.TYPE;
});
const FIRST_DECLARES = 32; // smaller numbers are roles

const MOST_LETTERS = 2_000; // of a text on one line

/** What holds functions: their numbers are not added up, the largest counts. */
const holdsFunctions = (role) => role === ROLE.TYPE || role >= ROLE.FOLDER;

/** The codes of MapColumns::Column::Name and Text. */
class TextColumn {
  constructor(reader, count) {
    this.reader = reader;
    this.last = 0;
    this.followers = new Int32Array(count);
  }

  /** The number of the next text, -1 for none; `fresh` is the number of one that is new. */
  next(fresh) {
    const code = this.reader.next();
    if (code === 0) return -1;
    const { last, followers } = this;
    this.last = code === 1 ? fresh : code === 2 ? followers[last] : last + unzigzag(code - 3);
    followers[last] = this.last;
    return this.last;
  }
}

class Tree {
  constructor(data) {
    this.data = data;
    this.texts = data.texts;
    const plan = planFolders(data.paths, data.folder);
    this.rootPath = plan.rootPath;
    this.title = plan.title;
    this.count = 1 + plan.folders + data.files + data.rows;
    for (const name of ["parent", "end", "depth", "line", "lastLine", "name", "text", "column"]) {
      this[name] = new Int32Array(this.count);
    }
    for (const name of ["size", "lines", "branches", "nesting", "step"]) this[name] = new Uint32Array(this.count);
    this.role = new Uint8Array(this.count);
    this.declares = new Uint8Array(this.count);
    this.stops = new Map(); // the lines at which files stopped early
    this.cuts = new Map(); // and those of an #if of which a branch is left out
    this.placeNames = [];
    const fileAt = this.addPlaces(plan);
    this.addRows(fileAt);
    this.incomplete = Int32Array.from([...new Set([...this.stops.keys(), ...this.cuts.keys()])]).sort();
    this.sumUp();
    this.weighBy("statements");
  }

  /** What the boxes are as large as. */
  weighBy(measure) {
    this.weight = measure === "lines" ? this.lines : this.size;
  }

  /** Puts folders and files where they belong, and leaves room for their rows. */
  addPlaces(plan) {
    const { fileRows, files } = this.data;
    const rows = new Uint32Array(files);
    for (let i = 0; i < files; ++i) rows[i] = fileRows.next();
    const fileAt = new Uint32Array(files);
    const open = [this.addPlace(0, ROLE.FOLDER, -1, plan.root)];
    let at = 1;
    for (const { file, kept, added, name } of plan.files) {
      open.length = kept + 1;
      for (const folder of added) open.push(this.addPlace(at++, ROLE.FOLDER, open.at(-1), folder));
      fileAt[file] = this.addPlace(at, ROLE.FILE, open.at(-1), name);
      at += 1 + rows[file];
    }
    this.rowsOfFile = rows;
    return fileAt;
  }

  addPlace(at, role, parent, name) {
    this.role[at] = role;
    this.parent[at] = parent;
    this.depth[at] = parent < 0 ? 0 : this.depth[parent] + 1;
    this.name[at] = this.placeNames.push(name) - 1;
    this.text[at] = -1;
    return at;
  }

  /** The rows' columns go from one file to the next in the order in which the files were read. */
  addRows(fileAt) {
    const { data } = this;
    const names = new TextColumn(data.name, data.texts.count);
    const texts = new TextColumn(data.text, data.texts.count);
    const hasColumns = data.link.includes("{column}");
    let met = 0; // how many texts
    const textOf = (column) => {
      const text = column.next(met);
      if (text === met) ++met;
      return text;
    };
    for (let file = 0; file < data.files; ++file) {
      let above = fileAt[file];
      let line = 0;
      this.lastLine[above] = data.fileLines.next();
      this.size[above] = data.fileStatements.next();
      this.addMarks(above);
      for (let i = above + 1, last = above + this.rowsOfFile[file]; i <= last; ++i) {
        for (let up = data.up.next(); up > 0; --up) above = this.parent[above];
        this.parent[i] = above;
        this.depth[i] = this.depth[above] + 1;
        const what = data.what.next();
        this.declares[i] = Math.max(0, what - FIRST_DECLARES);
        this.role[i] = what < FIRST_DECLARES ? what : ROLE_OF[what - FIRST_DECLARES];
        this.line[i] = line += data.line.nextSigned();
        this.lastLine[i] = line + data.span.nextSigned();
        this.text[i] = textOf(texts);
        names.last = texts.last;
        this.name[i] = textOf(names);
        this.size[i] = data.statements.next();
        this.branches[i] = data.branches.next();
        this.nesting[i] = data.nesting.next();
        this.step[i] = data.step.next();
        if (hasColumns) this.column[i] = data.column.next();
        above = i;
      }
    }
  }

  /** What is missing of a file. */
  addMarks(file) {
    const stop = this.data.fileStops.next();
    const cut = this.data.fileCuts.next();
    if (stop > 0) this.stops.set(file, stop);
    if (cut > 0) this.cuts.set(file, cut);
  }

  /** From the last node to the first, each into the one that it lies in. */
  sumUp() {
    const { parent, end, role, size, line, lastLine, lines, branches, nesting, step } = this;
    this.counts = new Uint32Array(ROLES.length);
    this.branchTotal = 0;
    for (let i = this.count - 1; i >= 0; --i) {
      if (end[i] === 0) end[i] = i + 1;
      ++this.counts[role[i]];
      // Of a folder they are those of its files; several statements may share one.
      if (role[i] !== ROLE.FOLDER) lines[i] = Math.max(1, role[i] === ROLE.FILE ? lastLine[i] : lastLine[i] - line[i] + 1);
      const above = parent[i];
      if (above < 0) continue;
      if (end[above] === 0) end[above] = end[i];
      size[above] += size[i];
      if (role[above] === ROLE.FOLDER) lines[above] += lines[i];
      const most = branches[i];
      branches[above] = holdsFunctions(role[above]) ? Math.max(branches[above], most) : branches[above] + most;
      nesting[above] = Math.max(nesting[above], nesting[i] + step[i]);
    }
  }

  /** The names of folders and files as texts to search in. */
  get places() {
    const lines = () => this.placeNames.map((name) => `${name.replaceAll("\n", "\r")}\n`).join("");
    this.placeTexts ??= new Texts(new TextEncoder().encode(lines()), this.placeNames.length);
    return this.placeTexts;
  }

  isPlace(node) {
    return this.role[node] >= ROLE.FOLDER;
  }

  hasChildren(node) {
    return this.end[node] > node + 1;
  }

  /** The nodes right below, in the order of the source. */
  children(node) {
    const children = [];
    for (let i = node + 1; i < this.end[node]; i = this.end[i]) children.push(i);
    return children;
  }

  /** What it declares or what it says, on one line. */
  label(node) {
    if (this.isPlace(node)) return oneLine(this.placeNames[this.name[node]]);
    const text = this.name[node] >= 0 ? this.name[node] : this.text[node];
    return text < 0 ? ROLES[this.role[node]] : oneLine(this.texts.get(text).slice(0, MOST_LETTERS));
  }

  /** In a word: what it declares, or else its role. */
  kindOf(node) {
    return DECLARES[this.declares[node]] || ROLES[this.role[node]];
  }

  /** Whether a file here or below stopped early ("stop"), or lacks a branch of an #if ("cut"). */
  lackIn(node) {
    const { incomplete, end } = this;
    let lack = "";
    for (let i = firstFrom(incomplete, node); i < incomplete.length && incomplete[i] < end[node]; ++i) {
      if (this.stops.has(incomplete[i])) return "stop";
      lack = "cut";
    }
    return lack;
  }

  /** In words, what a file lacks. */
  lacksOf(file) {
    const lacks = [];
    if (this.stops.has(file)) lacks.push(`stopped early at line ${this.stops.get(file)}: braces do not match`);
    if (this.cuts.has(file)) lacks.push(`one branch of the #if at line ${this.cuts.get(file)} is left out`);
    return lacks;
  }

  wholeText(node) {
    return this.text[node] < 0 ? this.label(node) : this.texts.get(this.text[node]);
  }

  /** The file that it lies in; a folder lies in none. */
  fileOf(node) {
    while (node >= 0 && this.role[node] !== ROLE.FILE) node = this.parent[node];
    return node;
  }

  /** The path below the root folder, as it was given. */
  pathOf(node) {
    const names = [];
    for (; node > 0; node = this.parent[node]) {
      if (this.isPlace(node)) names.push(this.placeNames[this.name[node]]);
    }
    return names.reverse().join("/");
  }

  /** The path as the program was given it. */
  fullPathOf(node) {
    return this.rootPath + this.pathOf(node);
  }
}

/**
 * Which folders there are: for each file, in the order of the paths, how many of the folders before
 * it it lies in too, and which it needs beside them. The folder that holds everything is the root.
 */
function planFolders(paths, folder) {
  const all = Array.from({ length: paths.count }, (_, i) => paths.get(i));
  const keys = all.map((path) => path.replaceAll("/", "\u0000"));
  const order = all.map((_, i) => i);
  if (keys.some((key, i) => i > 0 && key < keys[i - 1])) {
    order.sort((a, b) => (keys[a] < keys[b] ? -1 : keys[a] > keys[b] ? 1 : a - b));
  }
  const rootPath = commonFolder(all[order[0]] ?? "", all[order.at(-1)] ?? "");
  const given = rootPath === "./" ? "" : rootPath.slice(0, -1);
  // A path of one name, such as src, says little without the folder that the program ran in.
  const title = given.includes("/") ? given : [folder, given].filter((name) => name !== "").join("/");
  const plan = { rootPath, title: title || "all files", root: title.split("/").at(-1) || "all files", folders: 0, files: [] };
  let open = [];
  for (const file of order) {
    const folders = all[file].slice(rootPath.length).split("/");
    const name = folders.pop();
    let kept = 0;
    while (kept < open.length && kept < folders.length && open[kept] === folders[kept]) ++kept;
    const added = folders.slice(kept);
    plan.folders += added.length;
    plan.files.push({ file, kept, added, name });
    open = folders;
  }
  return plan;
}

/** What the first and the last of ordered paths have in common all of them have. */
function commonFolder(first, last) {
  let same = 0;
  while (same < first.length && first[same] === last[same]) ++same;
  return first.slice(0, first.slice(0, same).lastIndexOf("/") + 1);
}

/** Where in an ascending list the first number is that is not below one; its length without any. */
function firstFrom(numbers, number) {
  let low = 0;
  let high = numbers.length;
  while (low < high) {
    const middle = (low + high) >>> 1;
    if (numbers[middle] < number) low = middle + 1;
    else high = middle;
  }
  return low;
}
