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

# The program logs the first frame its window shows, stamped to the millisecond.
logs="$data/logs"
for run in $(seq 1 "$runs"); do
    rm -rf "$logs"
    HOME="$work" XDG_DATA_HOME="$work/.local/share" XDG_CONFIG_HOME="$work/.config" \
        XDG_CACHE_HOME="$work/.cache" LANG=en_US.UTF-8 QT_QUICK_BACKEND=software \
        xvfb-run -a -s "-screen 0 1440x900x24" bash -c '
            started=$(date +%s.%N)
            "$1" > /dev/null 2>&1 & pid=$!
            line=""
            for attempt in $(seq 1 300); do
                sleep 0.05
                line=$(grep -rh "Main window: first frame shown" "$2" 2>/dev/null | head -n1) || true
                [[ -n "$line" ]] && break
            done
            kill "$pid"
            wait "$pid" || true
            stamp=$(grep -oE "[0-9]{4}-[0-9]{2}-[0-9]{2}T[0-9:.]+" <<< "$line" | head -n1)
            [[ -n "$stamp" ]] || { echo "no first frame logged"; exit 1; }
            echo "$started $(date -d "$stamp" +%s.%N)"
        ' measure "$program" "$logs" | awk -v run="$run" -v count="$count" \
            "{ printf \"run %d: first frame %.3f s after process start with %d tasks\\n\", run, \$2 - \$1, count }"
done
