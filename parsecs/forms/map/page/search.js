// Searching names and texts, for words or for a regular expression.

/**
 * One search at a time: `show` gets its hits, or null, a word on it, and whether that comes after
 * the call that asked for it.
 */
class Search {
  constructor(tree, show) {
    this.tree = tree;
    this.show = show;
    this.expressions = new ExpressionSearch([tree.texts, tree.places]);
  }

  get isRunning() {
    return this.expressions.give !== null;
  }

  /** The first search then waits for nothing. */
  prepare() {
    this.expressions.prepare();
  }

  for({ query, regex: isExpression, order }) {
    this.order = order;
    this.expressions.cancel();
    if (query.trim() === "") this.show(null, "", false);
    else if (isExpression) this.forExpression(query);
    else this.forWords(new Words(query));
  }

  forWords(words) {
    const { texts, places } = this.tree;
    this.give(new Hits(this.tree, texts.find(words), places.find(words), words, this.order), false);
  }

  forExpression(text) {
    this.expressions.start(text, ({ found, failure }) => {
      if (found === undefined) this.show(null, failure, true);
      else this.give(new Hits(this.tree, ...found, null, this.order), true);
    });
    this.show(null, "searching…", false);
  }

  give(hits, late) {
    const definitions = hits.definitions > 0 && this.order !== "alone" ? `, ${counted(hits.definitions, "definition")}` : "";
    this.show(hits, counted(hits.nodes.length, "hit") + definitions, late);
  }
}

/** The nodes that were found, in the order of the source. `order` is one of the page's choices. */
class Hits {
  /** Of texts and places what Texts.find told; `words` are null for an expression. */
  constructor(tree, inTexts, inPlaces, words, order) {
    Object.assign(this, { tree, inTexts, inPlaces, words, order });
    const nodes = new Int32Array(tree.count);
    let count = 0;
    this.definitions = 0;
    const { name, text, role, declares } = tree;
    const [isText, isPlace] = [inTexts.is, inPlaces.is];
    for (let i = 0; i < tree.count; ++i) {
      const hit = role[i] >= ROLE.FOLDER ? isPlace[name[i]] : isText[text[i]] || isText[name[i]];
      if (!hit || (order === "alone" && declares[i] === 0)) continue;
      nodes[count++] = i;
      if (declares[i] > 0) ++this.definitions;
    }
    this.nodes = nodes.slice(0, count);
    // A name in which the one word was found is that word if it is as long.
    this.wholeSize = words?.words.length === 1 ? new TextEncoder().encode(words.words[0]).length : -1;
  }

  /** In the order of the list: what bears the name that was asked for comes first. */
  get listed() {
    if (this.order === "source") return this.nodes;
    const ranks = [[], [], [], []];
    for (const node of this.nodes) ranks[this.rankOf(node)].push(node);
    return Int32Array.from(ranks.flat());
  }

  rankOf(node) {
    const { tree, inTexts } = this;
    const name = tree.name[node];
    if (tree.declares[node] === 0) return 3;
    if (!inTexts.is[name]) return 2;
    return tree.texts.sizeOf(name) === this.wholeSize ? 0 : 1;
  }

  /** The text of a node in pieces, of which every second one was found. */
  split(node) {
    const { tree, inTexts, inPlaces } = this;
    const text = tree.isPlace(node) ? tree.placeNames[tree.name[node]] : tree.wholeText(node);
    if (this.words !== null) return this.words.split(text.slice(0, MOST_LETTERS));
    const [found, i] = tree.isPlace(node) ? [inPlaces, tree.name[node]] : [inTexts, tree.text[node]];
    const [from, to] = found.is[i] ? [found.from[i], found.to[i]] : [0, 0];
    return [text.slice(0, from), text.slice(from, to), text.slice(to, to + MOST_LETTERS)];
  }

  has(node) {
    return this.nodes[firstFrom(this.nodes, node)] === node;
  }

  /** Whether there is one in the node or below it. */
  areIn(node, tree) {
    const at = firstFrom(this.nodes, node);
    return at < this.nodes.length && this.nodes[at] < tree.end[node];
  }
}
