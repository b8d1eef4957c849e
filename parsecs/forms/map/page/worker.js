// Expressions are searched for in a worker, which ends when one takes too long. The worker runs the
// page's own script, which is in the page: there is no other file.

const PATIENCE = 5_000; // milliseconds for a search

/** In the page: the one search that is under way, or none. */
class ExpressionSearch {
  /** The texts are searched each as a whole list. */
  constructor(lists) {
    this.lists = lists;
    this.worker = null;
    this.give = null;
  }

  /** Makes the worker ready. It keeps the texts for all searches. */
  prepare() {
    if (this.worker !== null) return;
    const script = URL.createObjectURL(new Blob([document.scripts[0].text], { type: "text/javascript" }));
    const worker = new Worker(script);
    URL.revokeObjectURL(script);
    worker.onmessage = ({ data }) => worker === this.worker && this.finish(data);
    worker.onerror = () => worker === this.worker && this.end("this browser cannot search for expressions here");
    // Copies: what a view is sent of goes along as a whole.
    const lists = this.lists.map(({ bytes, count }) => ({ bytes: bytes.slice(), count }));
    worker.postMessage({ lists }, lists.map(({ bytes }) => bytes.buffer));
    this.worker = worker;
  }

  /** Gives { found } with a list for each list of texts, or { failure } in words. */
  start(expression, give) {
    this.cancel();
    this.prepare();
    this.give = give;
    this.timer = setTimeout(() => this.end(`given up after ${PATIENCE / 1000} seconds`), PATIENCE);
    this.worker.postMessage({ expression });
  }

  /** A search that is no longer wanted may be one that never ends. */
  cancel() {
    if (this.give !== null) this.end();
  }

  end(failure) {
    this.worker.terminate();
    this.worker = null;
    this.finish({ failure });
  }

  finish(answer) {
    const { give } = this;
    clearTimeout(this.timer);
    this.give = null;
    if (answer.found !== undefined || answer.failure !== undefined) give?.(answer);
  }
}

/** In the worker. */
function answerSearches() {
  let lists = [];
  self.onmessage = ({ data }) => {
    if (data.lists !== undefined) lists = data.lists.map(({ bytes, count }) => new Texts(bytes, count).join());
    else {
      const answer = answerTo(data.expression, lists);
      const columns = (answer.found ?? []).flatMap((found) => Object.values(found));
      self.postMessage(answer, columns.map(({ buffer }) => buffer));
    }
  };
}

function answerTo(text, lists) {
  let expression = null;
  try {
    expression = new Expression(text);
    return { found: lists.map((texts) => texts.find(expression)) };
  } catch {
    // Only when one is first tried the browser may find that it is too large.
    return { failure: expression === null ? "not a regular expression" : "too large an expression" };
  }
}
