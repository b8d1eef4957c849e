// Where the boxes of the map lie: a squarified treemap of what is large enough to be seen.

const HEAD = 16; // height of an open box's label
const LEAST = 3; // a box with a shorter side is not drawn

/**
 * The boxes below a node, parents before what lies in them. A box is { node, shown, label, parent,
 * x, y, w, h, head, open, rest, first, count }: `shown` is the innermost of folders, or of namespaces and types,
 * that hold nothing but one another; `rest` has the nodes of a box that stands for the smallest in
 * its parent, and is null for all others; `first` and `count` tell which boxes lie right in it. Boxes of a role in `closed` show nothing inside.
 */
function layOut(tree, root, width, height, closed) {
  const boxes = [{ node: root, shown: root, parent: -1, x: 0, y: 0, w: width, h: height, head: 0, open: false, rest: null, first: 0, count: 0 }];
  for (let i = 0; i < boxes.length; ++i) {
    if (i === 0 || !closed.includes(tree.role[boxes[i].shown])) openBox(tree, boxes, i);
  }
  return boxes;
}

function openBox(tree, boxes, i) {
  const box = boxes[i];
  if (box.rest !== null || !tree.hasChildren(box.shown)) return;
  const gap = Math.min(box.w, box.h) > 48 ? 2 : 1;
  const head = box.parent >= 0 && box.w > 40 && box.h > HEAD * 2 ? HEAD : 0;
  const inner = { x: box.x + gap, y: box.y + gap + head, w: box.w - 2 * gap, h: box.h - 2 * gap - head };
  if (inner.w < 2 * LEAST || inner.h < 2 * LEAST) return;
  box.first = boxes.length;
  const children = largestFirst(tree.children(box.shown), tree.weight);
  const sizes = children.map((node) => Math.max(1, tree.weight[node]));
  squarify(sizes, inner, (at, x, y, w, h, rest) => {
    if (rest && at === 0) return; // nothing in it would be seen: it stays closed
    [box.open, box.head] = [true, head];
    ++box.count;
    const shown = innermost(tree, children[at]);
    boxes.push({ node: children[at], shown, parent: i, x, y, w, h, head: 0, open: false, rest: rest ? children.slice(at) : null, first: 0, count: 0 });
  });
}

/** The largest first; of equal ones the first in the source. */
function largestFirst(nodes, measure) {
  // A number sorts faster than two are compared, and holds both exactly.
  const keys = Float64Array.from(nodes, (node, i) => measure[node] * 2 ** 22 - i).sort();
  const sorted = new Array(nodes.length);
  keys.forEach((key, i) => {
    sorted[nodes.length - 1 - i] = nodes[Math.ceil(key / 2 ** 22) * 2 ** 22 - key];
  });
  return sorted;
}

function innermost(tree, node) {
  const { role, end } = tree;
  const nests = role[node] === ROLE.FOLDER || role[node] === ROLE.TYPE;
  while (nests && role[node + 1] === role[node] && end[node + 1] === end[node]) ++node;
  return node;
}

/**
 * Fills a rectangle with boxes of the given sizes, largest first, in rows along its shorter side; a
 * row ends where one more box would make its boxes longer. Sizes too small to be seen become one
 * box, with the first of them and `rest`.
 */
function squarify(sizes, { x, y, w, h }, place) {
  let left = sizes.reduce((sum, size) => sum + size, 0);
  for (let first = 0; first < sizes.length; ) {
    const side = Math.min(w, h);
    const scale = (w * h) / left;
    let sum = sizes[first];
    let next = first + 1;
    let worst = longest(sizes[first] * scale, sizes[first] * scale, (sum * scale) / side);
    for (; next < sizes.length; ++next) {
      const thick = ((sum + sizes[next]) * scale) / side;
      const longer = longest(sizes[first] * scale, sizes[next] * scale, thick);
      if (longer > worst) break;
      worst = longer;
      sum += sizes[next];
    }
    const thick = (sum * scale) / side;
    if (thick < LEAST && next < sizes.length) return place(first, x, y, w, h, true);
    let at = 0;
    for (let i = first; i < next; ++i) {
      const long = (sizes[i] * scale) / thick;
      if (w >= h) place(i, x, y + at, thick, long, false);
      else place(i, x + at, y, long, thick, false);
      at += long;
    }
    if (w >= h) (x += thick), (w -= thick);
    else (y += thick), (h -= thick);
    left -= sum;
    first = next;
  }
}

/** How many times longer than wide the largest or the smallest box of a row is at most. */
function longest(large, small, thick) {
  const square = thick * thick;
  return Math.max(large / square, square / small);
}
