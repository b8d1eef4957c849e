// Puts the page together: one state, in the address, from which everything is shown.

const LEAST_INSIDE = 3; // nodes; a map of fewer is blank
const MOST_STEPS = 9; // of the trail; there may be a hundred thousand
const byId = (id) => document.getElementById(id);

class Page {
  constructor(tree) {
    this.tree = tree;
    this.colours = new Colours();
    // What an empty page shows.
    this.state = { root: -1, chosen: -1, query: "", regex: false, list: CHOICES.list[0], order: CHOICES.order[0] };
    const links = new Links(tree);
    this.map = new MapView(tree, this.colours, {
      canvas: byId("map"),
      cursor: byId("cursor"),
      spot: byId("spot"),
      open: (node) => this.zoomTo(node),
      point: (node, count) => this.tell(node, count),
    });
    this.detail = new Detail(tree, links, {
      choose: (node) => this.go({ chosen: node }, false),
      open: (node) => this.zoomTo(node),
      rank: () => this.go({ list: "functions", by: "branches" }, false),
    });
    this.results = new Results(tree, links, { choose: (node) => this.zoomTo(node) });
    this.ranks = new Ranks(tree, links, { choose: (node) => this.zoomTo(node) });
    this.search = new Search(tree, (hits, word, late) => this.showHits(hits, word, late));
    this.listen();
  }

  listen() {
    const query = byId("query");
    query.addEventListener("input", () => this.go({ query: query.value }, false));
    query.addEventListener("focus", () => this.search.prepare());
    query.addEventListener("keydown", (event) => this.onSearchKey(event));
    byId("search").addEventListener("submit", (event) => event.preventDefault());
    byId("regex").addEventListener("change", (event) => this.go({ regex: event.target.checked }, false));
    document.addEventListener("change", ({ target }) => {
      if (Object.hasOwn(CHOICES, target.name)) this.go({ [target.name]: target.value }, false);
    });
    document.addEventListener("keydown", (event) => this.onKey(event));
    window.addEventListener("hashchange", () => this.show(stateOf(this.tree, location.hash)));
    matchMedia("(prefers-color-scheme: dark)").addEventListener("change", () => {
      this.colours.read();
      this.colours.showLegend(byId("legend"), this.tree);
      this.map.draw();
    });
    new ResizeObserver(() => this.resize()).observe(byId("stage"));
  }

  resize() {
    this.map.refit();
    for (const { list } of [this.detail, this.results, this.ranks]) list.refresh();
  }

  /** Changes the state; `step` is whether the browser's way back leads to the one before. */
  go(changes, step = true) {
    const state = { ...this.state, ...changes };
    const address = addressOf(this.tree, state);
    if (step && address !== location.hash) history.pushState(null, "", address);
    else history.replaceState(null, "", address);
    this.show(state);
  }

  /** Zooms to a node; one that has next to nothing in it is chosen where it lies. */
  zoomTo(node) {
    const { tree } = this;
    const least = tree.isPlace(node) ? 1 : LEAST_INSIDE;
    const root = tree.end[node] - node > least ? node : tree.parent[node];
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
    const changed = (...names) => names.some((name) => state[name] !== before[name]);
    this.showChoices();
    this.tree.weighBy(state.size);
    this.colours.by = state.colour;
    // What may change the height of the map comes before it.
    if (changed("colour")) this.colours.showLegend(byId("legend"), this.tree);
    if (changed("root", "query", "regex", ...Object.keys(CHOICES))) this.showTrail();
    const searched = changed("query", "regex", "order");
    if (searched) this.startSearch();
    if (changed("root", "colour", "size")) this.map.show(state.root);
    else if (searched) this.map.draw();
    if (changed("root", "list", "by")) this.showList();
    if (changed("root", "chosen", "size")) this.detail.show(state.root, state.chosen, state.size);
    else if (changed("list")) this.detail.list.refresh();
  }

  /** All controls as the state has them. */
  showChoices() {
    const { state } = this;
    if (byId("query").value !== state.query) byId("query").value = state.query;
    byId("regex").checked = state.regex;
    for (const name of Object.keys(CHOICES)) {
      for (const control of document.getElementsByName(name)) {
        if (control.type === "radio") control.checked = control.value === state[name];
        else control.value = state[name];
      }
    }
  }

  /** One of the lists of what is zoomed to. */
  showList() {
    const { list, by, root } = this.state;
    const contents = list === "contents";
    byId("boxes").hidden = !contents;
    byId("ranking").hidden = contents;
    byId("measures").hidden = list === "incomplete";
    if (!contents) this.ranks.show(root, list, by);
    byId("ranking").dataset.by = by;
    byId("ranked").hidden = contents;
  }

  startSearch() {
    delete document.documentElement.dataset.searched;
    this.started = performance.now();
    this.search.for(this.state);
  }

  /** What comes late finds the map drawn. */
  showHits(hits, word, late) {
    this.map.hits = hits;
    if (late) this.map.draw();
    this.results.show(hits, word, this.state.root);
    if (!this.search.isRunning) document.documentElement.dataset.searched = performance.now() - this.started;
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

  /** Says what is under the cursor: one node, or the first of several. */
  tell(node, count) {
    const { tree } = this;
    const shown = node >= 0 ? node : this.state.root;
    const label = tree.isPlace(shown) ? placeOf(tree, shown) : tree.label(shown).slice(0, 200);
    const facts = [`${MARKS[tree.role[shown]]} ${label}`, ...factsOf(tree, shown)];
    if (count > 1) facts[0] += ` and ${(count - 1).toLocaleString("en")} more`;
    if (!tree.isPlace(shown)) facts.splice(1, 0, `${tree.label(tree.fileOf(shown))}:${tree.line[shown]}`);
    byId("here").textContent = facts.join(" · ");
  }

  onKey(event) {
    const typing = event.target.matches("input[type=search], select");
    if (event.ctrlKey || event.altKey || event.metaKey) return;
    if (event.key === "Escape" && !typing) this.back();
    else if (event.key === "/" && !typing) byId("query").focus();
    else if (event.key === "o" && !typing && !byId("open").hidden) byId("open").click();
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
    const title = oneLine(tree.title);
    document.title = `Map of ${title}`;
    byId("title").textContent = title;
    byId("open-key").hidden = tree.data.link === "";
    const facts = [counted(counts[ROLE.FILE], "file"), counted(counts[ROLE.FUNCTION], "function"), counted(tree.size[0], "statement")];
    if (!tree.data.definitionsOnly) facts.push(counted(counts[ROLE.BRANCH], "branch", "branches"), counted(counts[ROLE.LOOP], "loop"));
    const lacking = tree.incomplete.length;
    byId("lacking").hidden = lacking === 0;
    byId("lacking-count").textContent = `Incomplete (${lacking.toLocaleString("en")})`;
    const stopped = tree.stops.size;
    if (stopped > 0) facts.push(`${counted(stopped, "file")} stopped early`);
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

if (globalThis.document === undefined) answerSearches();
else start().catch((error) => {
  byId("counts").textContent = `This page cannot be shown: ${error.message}`;
});
