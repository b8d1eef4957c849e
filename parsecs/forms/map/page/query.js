// What is searched for: words, or a regular expression. Either has a searcher, which tells where to
// look, and says of one text where it is found. Letters in upper case are meant so.

/** Texts that hold each of some words. */
class Words {
  constructor(text) {
    this.exact = /\p{Lu}/u.test(text);
    this.words = [...new Set(this.fold(text).split(/\s+/))].filter((word) => word !== "");
  }

  fold(text) {
    return this.exact ? text : text.toLowerCase();
  }

  /** `next` goes from a place to that of the next candidate, which a sure one need not look at. */
  searcher(joined, lower) {
    const text = this.exact ? joined : lower;
    if (text === null) return { next: (from) => from, sure: false };
    const longest = this.words.reduce((a, b) => (b.length > a.length ? b : a));
    return { next: (from) => text.indexOf(longest, from), sure: this.words.length === 1 };
  }

  /** Where a text is found, -1 if it is not. */
  placeIn(text) {
    const folded = this.fold(text);
    return this.words.every((word) => folded.includes(word)) ? 0 : -1;
  }

  /** Splits a text into pieces, of which every second one is a word that was found. */
  split(text) {
    const lower = this.fold(text);
    const folded = lower.length === text.length ? lower : text; // places are those of the text
    let ahead = this.words.map((word) => ({ word, at: -1 }));
    const pieces = [];
    for (let from = 0; ; ) {
      ahead = ahead.map(({ word, at }) => ({ word, at: at >= from ? at : folded.indexOf(word, from) })).filter(({ at }) => at >= 0);
      if (ahead.length === 0) return [...pieces, text.slice(from)];
      const next = ahead.reduce((a, b) => (b.at < a.at || (b.at === a.at && b.word.length > a.word.length) ? b : a));
      const end = next.at + next.word.length;
      pieces.push(text.slice(from, next.at), text.slice(next.at, end));
      from = end;
    }
  }
}

/** Whether an expression may match a line feed, with which each text ends. */
const MAY_REACH_OVER = /\[\^|\\[^bBdw.*+?()[\]{}|^$/\\-]|\(\?[a-z]/;

/** Throws a SyntaxError for an expression that is none. One may take longer than anybody waits. */
class Expression {
  constructor(text) {
    const exact = /(^|[^\\])[A-Z]/.test(text);
    this.regex = new RegExp(text, exact ? "gm" : "gim");
    this.length = 0; // of what was found last
  }

  searcher(joined) {
    // Tried on each text alone: over all of them, from each of them, it could take minutes.
    if (MAY_REACH_OVER.test(this.regex.source)) return { next: (from) => from, sure: false };
    const next = (from) => {
      this.regex.lastIndex = from;
      return this.regex.exec(joined)?.index ?? -1;
    };
    return { next, sure: false };
  }

  placeIn(text) {
    this.regex.lastIndex = 0;
    const found = this.regex.exec(text);
    this.length = found?.[0].length ?? 0;
    return found?.index ?? -1;
  }
}
