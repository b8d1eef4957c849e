-- Ends an update. Rows have been added, with ids from added.first on, and comments from
-- added.firstComment on; the ranges of those that go are in lost. An index of words is written as a
-- piece as long as ids ascend, and pieces are slow to merge: so all that goes leaves it at once, and
-- all that comes enters it at once.

INSERT INTO text_fts(text_fts, rowid, text)
SELECT 'delete', words.id, words.text
FROM lost CROSS JOIN words ON words.id BETWEEN lost.first AND lost.last
ORDER BY lost.first, words.id;

INSERT INTO text_fts(rowid, text)
SELECT id, text FROM words WHERE id >= (SELECT first FROM added) ORDER BY id;

INSERT INTO comment_fts(comment_fts, rowid, text)
SELECT 'delete', comment.id, comment.text
FROM lost CROSS JOIN comment ON comment.id BETWEEN lost.firstComment AND lost.lastComment
ORDER BY lost.first, comment.id;

INSERT INTO comment_fts(rowid, text)
SELECT id, text FROM comment WHERE id >= (SELECT firstComment FROM added) ORDER BY id;

CREATE TEMP TABLE doubtful AS
SELECT DISTINCT node.name
FROM lost CROSS JOIN node ON node.id BETWEEN lost.first AND lost.last WHERE node.name IS NOT NULL;

DELETE FROM node WHERE id IN (
    SELECT node.id FROM lost CROSS JOIN node ON node.id BETWEEN lost.first AND lost.last);
DELETE FROM declaration WHERE id IN (
    SELECT declaration.id
    FROM lost CROSS JOIN declaration ON declaration.id BETWEEN lost.first AND lost.last);
DELETE FROM attribute WHERE id IN (
    SELECT attribute.id
    FROM lost CROSS JOIN attribute ON attribute.id BETWEEN lost.first AND lost.last);
DELETE FROM function WHERE id IN (
    SELECT function.id
    FROM lost CROSS JOIN function ON function.id BETWEEN lost.first AND lost.last);
DELETE FROM base WHERE type IN (
    SELECT base.type FROM lost CROSS JOIN base ON base.type BETWEEN lost.first AND lost.last);
DELETE FROM comment WHERE id IN (
    SELECT comment.id
    FROM lost CROSS JOIN comment ON comment.id BETWEEN lost.firstComment AND lost.lastComment);

CREATE TEMP TABLE unused AS
SELECT id, name FROM name
WHERE name IN (SELECT name FROM doubtful)
    AND NOT EXISTS (SELECT 1 FROM node WHERE node.name = name.name);
INSERT INTO name_fts(name_fts, rowid, name) SELECT 'delete', id, name FROM unused ORDER BY id;
DELETE FROM name WHERE id IN (SELECT id FROM unused);

CREATE TEMP TABLE kept AS SELECT coalesce(max(id), 0) AS last FROM name;
INSERT OR IGNORE INTO name(name)
SELECT DISTINCT name FROM node
WHERE id >= (SELECT first FROM added) AND name IS NOT NULL ORDER BY name;
INSERT INTO name_fts(rowid, name)
SELECT id, name FROM name WHERE id > (SELECT last FROM kept) ORDER BY id;
