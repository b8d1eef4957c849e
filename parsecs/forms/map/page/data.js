// Reads the data that the page holds: deflated sections of numbers and texts, as base64.

const FORMAT = 3;
const COLUMNS = ["up", "what", "line", "span", "text", "name", "statements", "branches", "nesting", "step", "column"];

function bytesOfBase64(text) {
  if (Uint8Array.fromBase64) return Uint8Array.fromBase64(text);
  const letters = atob(text);
  const bytes = new Uint8Array(letters.length);
  for (let i = 0; i < letters.length; ++i) bytes[i] = letters.charCodeAt(i);
  return bytes;
}

async function inflate(bytes) {
  const stream = new Blob([bytes]).stream().pipeThrough(new DecompressionStream("deflate"));
  return new Uint8Array(await new Response(stream).arrayBuffer());
}

/** A number of either sign, whose lowest bit was the sign. */
const unzigzag = (number) => (number >>> 1) ^ -(number & 1);

/** Numbers of seven bits a byte, the lowest first; all but the last byte have the eighth set. */
class NumberReader {
  constructor(bytes) {
    this.bytes = bytes;
    this.at = 0;
  }

  next() {
    let byte = this.bytes[this.at++];
    let number = byte & 0x7f;
    for (let shift = 7; byte > 0x7f; shift += 7) {
      byte = this.bytes[this.at++];
      number |= (byte & 0x7f) << shift;
    }
    return number >>> 0;
  }

  nextSigned() {
    return unzigzag(this.next());
  }

  /** A number of bytes, and the bytes. */
  nextSection() {
    const size = this.next();
    this.at += size;
    return this.bytes.subarray(this.at - size, this.at);
  }
}

/** What the page's data element holds; the element goes, so that its text is not kept twice. */
async function readData(element) {
  const bytes = bytesOfBase64(element.textContent);
  element.remove();
  const reader = new NumberReader(await inflate(bytes));
  if (reader.next() !== FORMAT) throw new Error("the data are of another format than the page");
  const data = {
    definitionsOnly: reader.next() === 1,
    files: reader.next(),
    rows: reader.next(),
    texts: reader.next(),
    rowsRead: reader.next(),
  };
  for (const name of ["fileRows", "fileLines", "fileStatements", "fileStops", "fileCuts", ...COLUMNS]) {
    data[name] = new NumberReader(reader.nextSection());
  }
  const about = new Texts(reader.nextSection(), 2);
  data.folder = about.get(0);
  data.link = about.get(1);
  data.paths = new Texts(reader.nextSection(), data.files);
  data.texts = new Texts(reader.nextSection(), data.texts);
  return data;
}
