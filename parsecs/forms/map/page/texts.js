// Texts that follow one another in one block of bytes, each ended by a line feed. One text is
// decoded when it is asked for; all of them, as one string to search in, when first searched.

const LINE_FEED = 10;
const decoder = new TextDecoder("utf-8", { ignoreBOM: true });

class Texts {
  constructor(bytes, count) {
    this.bytes = bytes;
    this.starts = new Uint32Array(count + 1);
    let at = 0;
    for (let i = 0; i < bytes.length; ++i) {
      if (bytes[i] === LINE_FEED) this.starts[++at] = i + 1;
    }
  }

  get count() {
    return this.starts.length - 1;
  }

  /** A text as it was; a line feed in it came as a carriage return. */
  get(i) {
    const bytes = this.bytes.subarray(this.starts[i], this.starts[i + 1] - 1);
    return decoder.decode(bytes).replaceAll("\r", "\n");
  }

  /** Its bytes, but for the line feed. */
  sizeOf(i) {
    return this.starts[i + 1] - this.starts[i] - 1;
  }

  /** Decodes all of them, unless that has been done. Returns itself. */
  join() {
    if (this.joined !== undefined) return this;
    this.joined = decoder.decode(this.bytes);
    this.lower = this.joined.toLowerCase();
    // A few letters have more of them in lower case: then places would differ.
    if (this.lower.length !== this.joined.length) this.lower = null;
    this.joinedStarts = this.starts;
    if (this.joined.length !== this.bytes.length) this.findStarts();
    return this;
  }

  findStarts() {
    this.joinedStarts = new Uint32Array(this.count + 1);
    let from = 0;
    for (let i = 1; i <= this.count; ++i) {
      from = this.joined.indexOf("\n", from) + 1;
      this.joinedStarts[i] = from;
    }
  }

  /**
   * Of each text whether the query finds it: `is` has 1 or 0. An expression tells besides from where
   * to where it matches first, after `is`.
   */
  find(query) {
    this.join();
    const places = query instanceof Expression ? this.count : 0;
    const found = { is: new Uint8Array(this.count), from: new Uint32Array(places), to: new Uint32Array(places) };
    const { joined, joinedStarts: starts } = this;
    const { next, sure } = query.searcher(joined, this.lower);
    let i = 0;
    for (let at = next(0); at >= 0 && at < joined.length; at = next(starts[i])) {
      i = this.indexAt(at, i);
      // What was found may reach over the end of the text, or be only one of the words.
      const place = sure ? 0 : query.placeIn(joined.slice(starts[i], starts[i + 1] - 1));
      if (place >= 0) {
        found.is[i] = 1;
        if (places > 0) found.from[i] = place;
        if (places > 0) found.to[i] = place + query.length;
      }
      if (++i === this.count) break;
    }
    return found;
  }

  /** Which text holds the place in the joined string; none before `low`. */
  indexAt(place, low) {
    const starts = this.joinedStarts;
    let high = this.count - 1;
    // The next hit is mostly near.
    for (let step = 1; low + step < high; step *= 2) {
      if (starts[low + step] > place) high = low + step;
    }
    while (low < high) {
      const middle = (low + high + 1) >>> 1;
      if (starts[middle] <= place) low = middle;
      else high = middle - 1;
    }
    return low;
  }
}

/** What a person sees of bytes that show nothing, or that would turn the text around. */
function visible(text) {
  return text
    .replace(/[\x00-\x08\x0b-\x1f\x7f-\x9f]/g, (c) => `\\x${c.charCodeAt(0).toString(16).padStart(2, "0")}`)
    .replace(/[\u200b\u200e\u200f\u202a-\u202e\u2060-\u2069\ufeff]/g, (c) => `\\u${c.charCodeAt(0).toString(16)}`);
}

/** The same on one line. */
function oneLine(text) {
  return visible(text).replaceAll("\n", "↵").replaceAll("\t", " ");
}
