-- The database of a code base: its tables and the views to ask. What makes it searchable is in
-- search.sql, which runs when the rows of a first build are there.
--
-- The rows of a file have ids of their own range, in the order of the source, and so has every
-- subtree: all that lies below a node are the nodes with ids from id + 1 to last. A file that has
-- changed gets a new range, after all others. So do its comments.

CREATE TABLE meta (
    name  TEXT PRIMARY KEY,    -- version: of parsecs; root: the folder that paths without a / at
    value                      -- their beginning start from; updated: when, UTC
) WITHOUT ROWID;

-- By which a later run knows that no byte has changed by itself: see Seal.cpp.
CREATE TABLE seal (checksum INTEGER, changes INTEGER);
INSERT INTO seal VALUES (NULL, NULL);

CREATE TABLE kind (
    id    INTEGER PRIMARY KEY,
    name  TEXT NOT NULL
);

CREATE TABLE declares (
    id    INTEGER PRIMARY KEY, -- 0: nothing
    name  TEXT NOT NULL
);

CREATE TABLE file (
    id        INTEGER PRIMARY KEY,
    path      TEXT NOT NULL UNIQUE,
    bytes     INTEGER NOT NULL,
    mtime     INTEGER NOT NULL, -- when it was changed last: nanoseconds since 1970, UTC
    hash      INTEGER NOT NULL, -- FNV-1a of its bytes
    stopped   INTEGER,          -- the line at which the parse stopped, null where it went through
    cut       INTEGER,          -- the line of the first #if of which a branch is left out, or null
    branches  INTEGER NOT NULL, -- its nodes of the kinds logic and loop
    first     INTEGER NOT NULL, -- the node of the file itself
    last      INTEGER NOT NULL, -- its last node
    firstComment INTEGER NOT NULL,
    lastComment  INTEGER NOT NULL -- less than the first where there are none
);

-- up, below and more are small and take little room. The last three columns, which questions ask for,
-- are computed from them and stored nowhere: that spares a tenth of the database.
CREATE TABLE node (
    id        INTEGER PRIMARY KEY,
    file      INTEGER NOT NULL, -- file.id
    up        INTEGER,
    below     INTEGER NOT NULL,
    depth     INTEGER NOT NULL, -- 0 for a file
    kind      INTEGER NOT NULL, -- kind.id
    declares  INTEGER NOT NULL, -- declares.id
    line      INTEGER NOT NULL, -- where its text begins, from 1; 0: there is no such place
    column    INTEGER NOT NULL, -- in bytes, from 1
    more      INTEGER NOT NULL, -- lines
    name      TEXT,             -- what it declares, null where that is nothing
    text      TEXT NOT NULL,    -- of the statement or the block's header, white space reduced
    parent    INTEGER AS (id - up),    -- null for a file
    last      INTEGER AS (id + below), -- the last node below it, itself where there is none
    endLine   INTEGER AS (line + more)
);

CREATE TABLE scope (
    id    INTEGER PRIMARY KEY,
    name  TEXT NOT NULL UNIQUE -- the names around a declaration, joined by dots
);

-- Of each node that declares something.
CREATE TABLE declaration (
    id         INTEGER PRIMARY KEY, -- node.id
    scope      INTEGER NOT NULL,    -- scope.id
    modifiers  TEXT NOT NULL        -- as they stand: public static
);

CREATE TABLE attribute (
    id    INTEGER PRIMARY KEY, -- node.id
    text  TEXT NOT NULL        -- the sections before it, as they stand
);

CREATE TABLE function (
    id          INTEGER PRIMARY KEY, -- node.id
    last        INTEGER NOT NULL,    -- node.last
    size        INTEGER NOT NULL,    -- nodes below it
    nesting     INTEGER NOT NULL,    -- levels of blocks around its deepest statement
    branches    INTEGER NOT NULL,    -- nodes of the kinds logic and loop below it
    loops       INTEGER NOT NULL,    -- levels of loops inside one another
    parameters  INTEGER NOT NULL,
    body        INTEGER              -- a hash of the texts below it; null where there are none
);

CREATE TABLE base (
    type  INTEGER NOT NULL, -- node.id
    name  TEXT NOT NULL,    -- what it derives from, without type arguments and namespace
    PRIMARY KEY (type, name)
) WITHOUT ROWID;

CREATE TABLE comment (
    id      INTEGER PRIMARY KEY,
    file    INTEGER NOT NULL, -- file.id
    line    INTEGER NOT NULL,
    column  INTEGER NOT NULL,
    text    TEXT NOT NULL     -- with its marks
);

-- What has a name: types, functions, properties, fields and so on.
CREATE VIEW definitions AS
SELECT node.name, declares.name AS declares, scope.name AS scope, file.path, node.line,
       node.column, node.endLine, declaration.modifiers, attribute.text AS attributes, node.text,
       node.id, node.last, node.parent
FROM declaration JOIN node ON node.id = declaration.id JOIN file ON file.id = node.file
    JOIN declares ON declares.id = node.declares JOIN scope ON scope.id = declaration.scope
    LEFT JOIN attribute ON attribute.id = node.id;

-- The words of a node: of its text and its attributes.
CREATE VIEW words AS
SELECT node.id, coalesce(attribute.text || ' ', '') || node.text AS text
FROM node LEFT JOIN attribute ON attribute.id = node.id;

-- Where a word is used, upper or lower case: WHERE word = 'x', or 'x AND y', or 'x*'. By the text
-- alone: two things of the same name are not told apart.
CREATE VIEW uses AS
SELECT text_fts.text_fts AS word, file.path, node.line, node.column,
       (SELECT holder.name
        FROM function JOIN node AS holder ON holder.id = function.id
        WHERE function.id BETWEEN file.first AND node.id AND function.last >= node.id
        ORDER BY function.id DESC LIMIT 1) AS function,
       kind.name AS kind, declares.name AS declares, node.name, node.text, node.id, node.last
FROM text_fts JOIN node ON node.id = text_fts.rowid JOIN file ON file.id = node.file
    JOIN kind ON kind.id = node.kind JOIN declares ON declares.id = node.declares;

-- Where a word is in a comment, in the same way.
CREATE VIEW comments AS
SELECT comment_fts.comment_fts AS word, file.path, comment.line, comment.column, comment.text,
       comment.id
FROM comment_fts JOIN comment ON comment.id = comment_fts.rowid
    JOIN file ON file.id = comment.file;

-- The types that derive from another, by its name: WHERE base = 'x'.
CREATE VIEW derived AS
SELECT base.name AS base, node.name, file.path, node.line, node.endLine, node.text, node.id,
       node.last
FROM base JOIN node ON node.id = base.type JOIN file ON file.id = node.file;

-- The nodes as people read them, each below what holds it: WHERE path = 'x' ORDER BY id.
CREATE VIEW outline AS
SELECT file.path, node.line, node.endLine, kind.name AS kind, declares.name AS declares,
       printf('%*s%s', 2 * min(node.depth, 20), '', coalesce(node.name, node.text)) AS outline,
       node.name, node.text, node.depth, node.id, node.last
FROM file JOIN node ON node.file = file.id AND node.id BETWEEN file.first AND file.last
    JOIN kind ON kind.id = node.kind JOIN declares ON declares.id = node.declares;

-- The range of ids, here and above, leads from one file to what is in it.
CREATE VIEW functions AS
SELECT node.name, file.path, node.line, node.endLine, function.size, function.nesting,
       function.branches, function.loops, function.parameters, node.text, function.id,
       function.last
FROM function JOIN node ON node.id = function.id
    JOIN file ON file.id = node.file AND function.id BETWEEN file.first AND file.last;

CREATE VIEW biggest AS SELECT * FROM functions ORDER BY size DESC;
CREATE VIEW deepest AS SELECT * FROM functions ORDER BY nesting DESC;
