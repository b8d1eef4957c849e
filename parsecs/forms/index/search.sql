-- What makes the rows searchable. Made of all rows at once after a first build, which is several
-- times faster than row by row; update.sql keeps it so afterwards.

CREATE INDEX node_name ON node(name) WHERE name IS NOT NULL;
CREATE INDEX declaration_scope ON declaration(scope);
CREATE INDEX base_name ON base(name);
CREATE INDEX file_mtime ON file(mtime);
CREATE INDEX function_size ON function(size);
CREATE INDEX function_nesting ON function(nesting);
CREATE INDEX function_branches ON function(branches);
CREATE INDEX function_loops ON function(loops);
CREATE INDEX function_parameters ON function(parameters);

-- The words of all texts. Without the places of the words in their texts it takes half the room,
-- but knows no phrases.
CREATE VIRTUAL TABLE text_fts USING fts5(
    text, content = 'words', content_rowid = 'id', detail = 'none', columnsize = 0,
    tokenize = "ascii tokenchars '_'");
INSERT INTO text_fts(text_fts, rank) VALUES ('hashsize', 50000000);
INSERT INTO text_fts(text_fts) VALUES ('rebuild');
INSERT INTO text_fts(text_fts) VALUES ('optimize'); -- or the first update would merge its parts

CREATE VIRTUAL TABLE comment_fts USING fts5(
    text, content = 'comment', content_rowid = 'id', detail = 'none', columnsize = 0,
    tokenize = "ascii tokenchars '_'");
INSERT INTO comment_fts(comment_fts, rank) VALUES ('hashsize', 50000000);
INSERT INTO comment_fts(comment_fts) VALUES ('rebuild');
INSERT INTO comment_fts(comment_fts) VALUES ('optimize');

-- Each name once, and where any three of its letters are found in a row.
CREATE TABLE name (id INTEGER PRIMARY KEY, name TEXT NOT NULL UNIQUE);
INSERT INTO name(name) SELECT DISTINCT name FROM node WHERE name IS NOT NULL ORDER BY name;
CREATE VIRTUAL TABLE name_fts USING fts5(
    name, content = 'name', content_rowid = 'id', columnsize = 0, tokenize = 'trigram');
INSERT INTO name_fts(name_fts) VALUES ('rebuild');
INSERT INTO name_fts(name_fts) VALUES ('optimize');
