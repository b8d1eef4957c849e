// Puts the page together: one state, in the address, from which everything is shown.

const MOST_STEPS = 9; // of the trail; there may be a hundred thousand
const byId = (id) => document.getElementById(id);

class Page {
  constructor(tree) {
    this.tree = tree;
    this.colours = new Colours();
    this.state = { root: -1, chosen: -1, colour: "", query: "", regex: false };
    this.hits = null;
    this.map = new MapView(tree, this.colours, {
      canvas: byId("map"),
      cursor: byId("cursor"),
      open: (node) => this.zoomTo(node),
      point: (node) => this.tell(node),
    });
    this.detail = new Detail(tree, {
      choose: (node) => this.go({ chosen: node }, false),
      open: (node) => this.zoomTo(node),
    });
    this.results = new Results(tree, { choose: (node) => this.zoomTo(node) });
    this.listen();
  }

  listen() {
    const query = byId("query");
    query.addEventListener("input", () => this.go({ query: query.value }, false));
    query.addEventListener("keydown", (event) => this.onSearchKey(event));
    byId("search").addEventListener("submit", (event) => event.preventDefault());
    byId("regex").addEventListener("change", (event) => this.go({ regex: event.target.checked }, false));
    byId("colour").addEventListener("change", (event) => this.go({ colour: event.target.value }, false));
    document.addEventListener("keydown", (event) => this.onKey(event));
    window.addEventListener("hashchange", () => this.show(stateOf(this.tree, location.hash)));
    matchMedia("(prefers-color-scheme: dark)").addEventListener("change", () => {
      this.colours.read();
      this.colours.showLegend(byId("legend"));
      this.map.draw();
    });
    new ResizeObserver(() => this.resize()).observe(byId("stage"));
  }

  resize() {
    this.map.refit();
    this.detail.list.refresh();
    this.results.list.refresh();
  }

  /** Changes the state; `step` is whether the browser's way back leads to the one before. */
  go(changes, step = true) {
    const state = { ...this.state, ...changes };
    const address = addressOf(this.tree, state);
    if (step && address !== location.hash) history.pushState(null, "", address);
    else history.replaceState(null, "", address);
    this.show(state);
  }

  /** Zooms to a node, or to the one that it lies in if there is nothing in it, and chooses it. */
  zoomTo(node) {
    const { tree } = this;
    const root = tree.hasChildren(node) || tree.isPlace(node) ? node : tree.parent[node];
    this.go({ root, chosen: root === node ? -1 : node });
  }

  back() {
    const above = this.tree.parent[this.state.root];
    if (above >= 0) this.go({ root: above, chosen: -1 });
  }

  /** Shows a state: only what differs from the one before. */
  show(state) {
    const before = this.state;
    this.state = state;
    const searched = state.query !== before.query || state.regex !== before.regex;
    if (searched) this.search();
    this.colours.by = state.colour;
    if (state.colour !== before.colour) this.colours.showLegend(byId("legend"));
    if (state.root !== before.root || state.colour !== before.colour) this.map.show(state.root);
    else if (searched) this.map.draw();
    if (state.root !== before.root) this.showTrail();
    if (state.root !== before.root || state.chosen !== before.chosen) this.detail.show(state.root, state.chosen);
    if (byId("query").value !== state.query) byId("query").value = state.query;
    byId("regex").checked = state.regex;
    byId("colour").value = state.colour;
  }

  search() {
    const { query, regex } = this.state;
    const found = byId("found");
    const started = performance.now();
    this.hits = null;
    found.textContent = "";
    if (query.trim() !== "") {
      try {
        this.hits = new Hits(this.tree, new Query(query, regex));
        found.textContent = counted(this.hits.nodes.length, "hit");
      } catch (error) {
        if (!(error instanceof SyntaxError)) throw error;
        found.textContent = "not a regular expression";
      }
    }
    this.map.hits = this.hits;
    document.documentElement.dataset.searched = performance.now() - started;
    this.results.show(this.hits, this.state.root);
  }

  showTrail() {
    const { tree } = this;
    const nodes = [];
    for (let node = this.state.root; node > 0 && nodes.length < MOST_STEPS; node = tree.parent[node]) nodes.unshift(node);
    const gap = nodes.length > 0 && tree.parent[nodes[0]] > 0;
    const items = [0, ...nodes].map((node) => {
      const item = document.createElement("li");
      const link = item.appendChild(element("a", "", tree.label(node).slice(0, 60)));
      link.href = addressOf(tree, { ...this.state, root: node, chosen: -1 });
      if (node === this.state.root) link.setAttribute("aria-current", "location");
      if (gap && node === 0) item.append(" …");
      return item;
    });
    byId("trail").querySelector("ol").replaceChildren(...items);
    byId("map").setAttribute("aria-label", `Map of ${tree.label(this.state.root).slice(0, 200)}`);
  }

  /** Says what is under the cursor. */
  tell(node) {
    const { tree } = this;
    const shown = node >= 0 ? node : this.state.root;
    byId("here").textContent = `${tree.label(shown).slice(0, 200)}: ${factsOf(tree, shown).join(" · ")}`;
  }

  onKey(event) {
    const typing = event.target.matches("input[type=search], select");
    if (event.key === "Escape" && !typing) this.back();
    else if (event.key === "/" && !typing) byId("query").focus();
    else return;
    event.preventDefault();
  }

  onSearchKey(event) {
    const { list } = this.results;
    if (event.key === "Escape" && this.state.query === "") byId("map").focus();
    else if (event.key === "Escape") this.go({ query: "" }, false);
    else if ((event.key === "Enter" || event.key === "ArrowDown") && list.count > 0) {
      list.element.focus();
      list.moveTo(Math.max(0, list.at));
    } else return;
    event.preventDefault();
  }

  showCounts() {
    const { tree } = this;
    const { counts } = tree;
    const title = tree.label(0);
    document.title = `Map of ${title}`;
    byId("title").textContent = title;
    const facts = [counted(counts[ROLE.FILE], "file"), counted(counts[ROLE.FUNCTION], "function"), counted(tree.size[0], "statement")];
    if (!tree.data.definitionsOnly) facts.push(counted(counts[ROLE.BRANCH], "branch", "branches"), counted(counts[ROLE.LOOP], "loop"));
    byId("counts").textContent = facts.join(" · ");
    const notice = byId("notice");
    notice.hidden = !tree.data.definitionsOnly;
    notice.textContent = notice.hidden ? "" : "So many files: the map has their types, functions and properties, with the numbers of all that lies in them, but not every statement. A map of a folder of them has.";
  }
}

async function start() {
  const tree = new Tree(await readData(byId("data")));
  const page = new Page(tree);
  page.showCounts();
  page.show(stateOf(tree, location.hash));
  document.documentElement.dataset.ready = performance.now();
  // The first search need not wait for what all searches need.
  setTimeout(() => [tree.texts, tree.places].forEach((texts) => texts.join()), 100);
}

start().catch((error) => {
  byId("counts").textContent = `This page cannot be shown: ${error.message}`;
});
