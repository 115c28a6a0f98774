#!/usr/bin/env bash
# Measures the window start-up of the real program with many tasks in the database: the time from
# process start to the first frame the window's render loop shows, under a virtual screen.
# Usage: scripts/startup-time.sh <path to norvel> <seed database> [task count] [runs]
set -euo pipefail

program=$(realpath "$1")
seed=$(realpath "$2")
count=${3:-10000}
runs=${4:-3}

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

data="$work/.local/share/Kelmora/Norvel"
mkdir -p "$data"
cp "$seed" "$data/norvel_data.db"
chmod u+w "$data/norvel_data.db"
inbox=f206bbf9-8d12-4482-a142-d02efefe8bbc
now=$(date +%s)
sqlite3 "$data/norvel_data.db" <<SQL
WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < $count)
INSERT INTO task (id, name, memo, parent, due, state, timestamp)
SELECT 'bulk-' || i, 'Task number ' || i, 'Memo of task ' || i, '$inbox',
       CASE WHEN i % 3 = 0 THEN $now + i * 3600 ELSE NULL END, CASE WHEN i % 5 = 0 THEN 2 ELSE 0 END, '$now'
FROM n;
SQL
cat > "$data/settings.dat" <<INI
[General]
app_version=1.11
show_welcome_screen=false
INI

# The render loop logs each frame it renders; the message pattern stamps it with the process time.
for run in $(seq 1 "$runs"); do
    HOME="$work" XDG_DATA_HOME="$work/.local/share" XDG_CONFIG_HOME="$work/.config" \
        XDG_CACHE_HOME="$work/.cache" LANG=en_US.UTF-8 QT_QUICK_BACKEND=software \
        QT_LOGGING_RULES="qt.scenegraph.renderloop=true" QT_MESSAGE_PATTERN="%{time process} %{message}" \
        xvfb-run -a -s "-screen 0 1440x900x24" bash -c '
            "$1" > "$2" 2>&1 & pid=$!
            for attempt in $(seq 1 100); do
                sleep 0.1
                grep -q "$3" "$2" && break
            done
            kill "$pid"
            wait "$pid" || true
        ' measure "$program" "$work/run.log" "renderWindow"
    seconds=$(grep -m1 "renderWindow" "$work/run.log" | awk "{print \$1}")
    echo "run $run: first frame after ${seconds:-?} s with $count tasks"
done
