PRAGMA page_size = 1024;
PRAGMA encoding = 'UTF-8';
PRAGMA journal_mode = DELETE;
PRAGMA user_version = 0;

CREATE TABLE "task" (
    "context" Text,
    "due" Integer,
    "id" Text NOT NULL,
    "memo" Text,
    "name" Text NOT NULL,
    "parent" Text NOT NULL,
    "period" Text,
    "start" Integer,
    "state" Integer NOT NULL DEFAULT 0,
    "task_id" Integer NOT NULL PRIMARY KEY AUTOINCREMENT,
    "timestamp" Text NOT NULL,
    "synced" Boolean NOT NULL DEFAULT 0,
    "local" Boolean NOT NULL DEFAULT 1,
    CONSTRAINT "unique_uuid" UNIQUE ("id")
);

CREATE TABLE "project" (
    "context" Text,
    "due" Integer,
    "folder" Boolean NOT NULL,
    "id" Text NOT NULL,
    "memo" Text,
    "name" Text NOT NULL,
    "parent" Text,
    "project_id" Integer NOT NULL PRIMARY KEY AUTOINCREMENT,
    "start" Integer,
    "state" Integer NOT NULL DEFAULT 0,
    "timestamp" Integer NOT NULL,
    "synced" Boolean NOT NULL DEFAULT 0,
    "local" Boolean NOT NULL DEFAULT 1,
    CONSTRAINT "unique_uuid" UNIQUE ("project_id")
);

CREATE TABLE "context" (
    "altitude" Real,
    "context_id" Integer NOT NULL PRIMARY KEY AUTOINCREMENT,
    "id" Text NOT NULL,
    "latitude" Real,
    "longitude" Real,
    "memo" Text,
    "name" Text NOT NULL,
    "parent" Text,
    "state" Integer NOT NULL DEFAULT 0,
    "timestamp" Integer NOT NULL,
    "synced" Boolean NOT NULL DEFAULT 0,
    "local" Boolean NOT NULL DEFAULT 1,
    CONSTRAINT "unique_uuid" UNIQUE ("id")
);

CREATE INDEX "index_uuid1" ON "task" ("id");
CREATE INDEX "index_uuid" ON "context" ("id");
CREATE INDEX "index_uuid2" ON "project" ("project_id");

INSERT INTO sqlite_sequence (name, seq) VALUES ('task', 0), ('project', 0), ('context', 0);
