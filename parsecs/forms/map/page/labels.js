// Labels that tell neighbours apart where there is little room.

const LEAST_SHARED = 4; // letters that are worth a mark in their place

/** The longest beginning, of whole words, that half of the labels have in common. */
function sharedStart(labels) {
  const sorted = [...labels].sort();
  const half = Math.max(2, Math.ceil(sorted.length / 2));
  let longest = "";
  // What the first and the last of some have in common all between them have.
  for (let i = 0; i + half <= sorted.length; ++i) {
    const shared = sharedWords(sorted[i], sorted[i + half - 1]);
    if (shared.length > longest.length) longest = shared;
  }
  return longest.length < LEAST_SHARED ? "" : longest;
}

function sharedWords(a, b) {
  let same = 0;
  while (same < a.length && a[same] === b[same]) ++same;
  while (same > 0 && !(endsWord(a, same) && endsWord(b, same))) --same;
  return a.slice(0, same);
}

/** Whether a word of the label ends there. */
function endsWord(label, at) {
  return at < label.length && (/[^\p{L}\p{N}]/u.test(label[at - 1]) || (/[^\p{Lu}]/u.test(label[at - 1]) && /\p{Lu}/u.test(label[at])));
}

/**
 * What does not fit loses what its neighbours have too, then the middle of a name, whose end tells
 * most, or the end of anything else.
 */
function shorten(label, letters, shared, isName) {
  if (label.length <= letters) return label;
  const own = shared !== "" && label.startsWith(shared) ? `…${label.slice(shared.length)}` : label;
  if (own.length <= letters) return own;
  const kept = Math.max(1, letters - 1);
  const first = kept < 5 || !isName ? kept : Math.ceil(kept / 3);
  return `${own.slice(0, first)}…${first === kept ? "" : own.slice(first - kept)}`;
}
