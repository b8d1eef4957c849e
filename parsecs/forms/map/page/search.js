// Searching names and texts, for words or a regular expression.

/** Whether an expression may match a line feed, with which each text ends. */
const MAY_REACH_OVER = /\[\^|\\[^bBdw.*+?()[\]{}|^$/\\-]|\(\?[a-z]/;

/** Throws a SyntaxError for an expression that is none. Letters in upper case are meant so. */
class Query {
  constructor(text, isRegex) {
    this.words = isRegex ? [] : text.split(/\s+/).filter((word) => word !== "");
    this.exact = isRegex ? /(^|[^\\])[A-Z]/.test(text) : /\p{Lu}/u.test(text);
    const source = isRegex ? text : this.words.map((word) => word.replace(/[\\^$.*+?()[\]{}|/-]/g, "\\$&")).join("|");
    this.regex = new RegExp(source, this.exact ? "gm" : "gim");
    this.isRegex = isRegex;
    this.isOneWord = this.words.length === 1;
  }

  /** A function from a place to that of the next candidate, -1 if there is none. */
  searcher(joined, lower) {
    // Tried on each text alone: over all of them, from each of them, it could take minutes.
    if (this.isRegex && MAY_REACH_OVER.test(this.regex.source)) return (from) => from;
    const longest = this.words.reduce((a, b) => (b.length > a.length ? b : a), "");
    if (!this.isRegex && (this.exact || lower !== null)) {
      const [text, word] = this.exact ? [joined, longest] : [lower, longest.toLowerCase()];
      return (from) => text.indexOf(word, from);
    }
    return (from) => {
      this.regex.lastIndex = from;
      return this.regex.exec(joined)?.index ?? -1;
    };
  }

  matches(text) {
    if (this.isRegex) {
      this.regex.lastIndex = 0;
      return this.regex.test(text);
    }
    const searched = this.exact ? text : text.toLowerCase();
    return this.words.every((word) => searched.includes(this.exact ? word : word.toLowerCase()));
  }

  /** Splits a text into pieces, of which every second one was found. */
  split(text) {
    const pieces = [];
    let from = 0;
    for (const found of text.matchAll(this.regex)) {
      pieces.push(text.slice(from, found.index), found[0]);
      from = found.index + found[0].length;
    }
    return [...pieces, text.slice(from)];
  }
}

/** The nodes that a query found, in the order of the source. */
class Hits {
  constructor(tree, query) {
    this.query = query;
    const inTexts = tree.texts.find(query);
    const inPlaces = tree.places.find(query);
    const nodes = new Int32Array(tree.count);
    let count = 0;
    for (let i = 0; i < tree.count; ++i) {
      const name = tree.name[i];
      const hit = tree.role[i] >= ROLE.FOLDER ? inPlaces[name] : inTexts[tree.text[i]] || inTexts[name];
      if (hit) nodes[count++] = i;
    }
    this.nodes = nodes.slice(0, count);
  }

  has(node) {
    return this.nodes[this.firstFrom(node)] === node;
  }

  /** Whether there is one in the node or below it. */
  areIn(node, tree) {
    const at = this.firstFrom(node);
    return at < this.nodes.length && this.nodes[at] < tree.end[node];
  }

  firstFrom(node) {
    let low = 0;
    let high = this.nodes.length;
    while (low < high) {
      const middle = (low + high) >>> 1;
      if (this.nodes[middle] < node) low = middle + 1;
      else high = middle;
    }
    return low;
  }
}

const MOST_BEFORE = 32; // letters before a find in its row

/** The list of what was found. */
class Results {
  constructor(tree, { choose }) {
    this.tree = tree;
    this.hits = null;
    this.section = document.getElementById("results");
    const act = (i) => choose(this.hits.nodes[i]);
    this.list = new VirtualList(document.getElementById("hits"), { draw: (i) => this.draw(i), choose: act, open: act });
  }

  /** Begins with what is in a node. */
  show(hits, node) {
    this.hits = hits;
    this.section.hidden = hits === null;
    this.list.setCount(hits === null ? 0 : hits.nodes.length);
    if (hits !== null) this.list.scrollTo(hits.firstFrom(node));
  }

  draw(i) {
    const { tree } = this;
    const node = this.hits.nodes[i];
    const row = element("div", "row hit");
    row.setAttribute("role", "option");
    const content = row.appendChild(element("span", `content is-${ROLES[tree.role[node]]}`));
    const mark = content.appendChild(element("span", "mark", MARKS[tree.role[node]]));
    mark.setAttribute("role", "img");
    mark.setAttribute("aria-label", ROLES[tree.role[node]]);
    const text = content.appendChild(element("span", "text"));
    const shown = tree.isPlace(node) ? tree.label(node) : oneLine(tree.wholeText(node).slice(0, MOST_LETTERS));
    const pieces = this.hits.query.split(shown);
    // What was found is seen, however much stands before it.
    if (pieces[0].length > MOST_BEFORE) pieces[0] = `…${pieces[0].slice(-MOST_BEFORE / 2)}`;
    text.append(...pieces.map((piece, k) => (k % 2 === 1 ? element("mark", "", piece) : piece)));
    const file = tree.fileOf(node);
    const line = tree.line[node];
    if (file >= 0 && file !== node) row.append(element("span", "where", tree.label(file)));
    if (line > 0) row.append(element("span", "where-line", `:${line}`));
    return row;
  }
}
