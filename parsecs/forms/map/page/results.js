// The list of what was found.

const MOST_BEFORE = 32; // letters before a find in its row

class Results {
  constructor(tree, links, { choose }) {
    Object.assign(this, { tree, links, hits: null, nodes: [] });
    this.section = document.getElementById("results");
    const act = (i) => choose(this.nodes[i]);
    this.list = new VirtualList(document.getElementById("hits"), { draw: (i) => this.draw(i), choose: act, open: act });
  }

  /** Begins with what is in a node. `word` says what there is to say of a search. */
  show(hits, word, node) {
    this.hits = hits;
    this.nodes = hits === null ? [] : hits.listed;
    this.section.hidden = word === "";
    document.getElementById("found").textContent = word;
    this.list.setCount(this.nodes.length);
    const end = this.tree.end[node];
    if (node > 0) this.list.scrollTo(Math.max(0, this.nodes.findIndex((hit) => hit >= node && hit < end)));
  }

  draw(i) {
    const { tree } = this;
    const node = this.nodes[i];
    const row = element("div", "row hit");
    row.setAttribute("role", "option");
    const content = row.appendChild(element("span", `content is-${ROLES[tree.role[node]]}`));
    content.append(markOf(tree, node));
    const pieces = this.hits.split(node).map(oneLine);
    // What was found is seen, however much stands before it.
    if (pieces[0].length > MOST_BEFORE) pieces[0] = `…${pieces[0].slice(-MOST_BEFORE / 2)}`;
    const text = content.appendChild(element("span", "text"));
    text.append(...pieces.map((piece, k) => (k % 2 === 1 ? element("mark", "", piece) : piece)));
    row.append(...this.links.placeOf(node));
    return row;
  }
}
