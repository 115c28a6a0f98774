#!/usr/bin/env bash
# Starts the real program on a virtual screen with a home of its own and a few demo tasks, and writes
# PNGs of the main window in the light and the dark theme.
# Usage: scripts/screenshots.sh <path to norvel> <seed database> <output directory>
set -euo pipefail

program=$(realpath "$1")
seed=$(realpath "$2")
output=$(realpath -m "$3")
mkdir -p "$output"

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# Dates are stored as the chosen wall-clock time labelled UTC, in seconds.
wall_clock() {
    date -u -d "$(date +%F) $1" +%s
}

prepare_home() {
    local home=$1 theme=$2 color=$3 language=$4
    local data="$home/.local/share/Kelmora/Norvel"
    mkdir -p "$data"
    cp "$seed" "$data/norvel_data.db"
    chmod u+w "$data/norvel_data.db"
    local inbox=f206bbf9-8d12-4482-a142-d02efefe8bbc now
    now=$(date +%s)
    sqlite3 "$data/norvel_data.db" <<SQL
INSERT INTO task (id, name, parent, due, state, timestamp) VALUES
    ('demo-1', 'Call the bank about the card', '$inbox', $(wall_clock "-1 day 18:00"), 0, '$now'),
    ('demo-2', 'Book tickets for the weekend', '$inbox', $(wall_clock "18:00"), 0, '$now'),
    ('demo-3', 'Buy a birthday present for Anna', '$inbox', NULL, 0, '$now'),
    ('demo-4', 'Read the chapter on weekly reviews', '$inbox', NULL, 0, '$now'),
    ('demo-5', 'Old shopping list', '$inbox', NULL, 1, '$now'),
    ('demo-6', 'Renew the gym membership', '$inbox', NULL, 1, '$now');
UPDATE task SET memo = 'Ask about the travel insurance that comes with the card' WHERE id = 'demo-1';
INSERT INTO project (id, name, parent, folder, context, due, state, timestamp) VALUES
    ('demo-home', 'Home', '', 1, NULL, NULL, 0, $now),
    ('demo-work', 'Work', '', 1, NULL, NULL, 0, $now),
    ('demo-kitchen', 'Kitchen renovation', 'demo-home', 0, '', $(wall_clock "+20 days 18:00"), 0, $now),
    ('demo-garden', 'Garden for the summer', 'demo-home', 0, '', NULL, 0, $now),
    ('demo-report', 'Quarterly report', 'demo-work', 0, '', $(wall_clock "+3 days 12:00"), 0, $now);
INSERT INTO context (id, name, parent, state, timestamp) VALUES
    ('demo-errands', 'Errands', '', 0, $now),
    ('demo-hardware', 'Hardware store', 'demo-errands', 0, $now),
    ('demo-phone', 'Phone', '', 0, $now),
    ('demo-computer', 'Computer', '', 0, $now);
INSERT INTO task (id, name, parent, context, start, due, period, state, timestamp) VALUES
    ('demo-p1', 'Choose the tiles for the kitchen', 'demo-kitchen', 'demo-hardware', NULL, $(wall_clock "10:00"), '', 0, '$now'),
    ('demo-p2', 'Ask three builders for a quote', 'demo-kitchen', 'demo-phone', NULL, $(wall_clock "14:30"), '', 0, '$now'),
    ('demo-p3', 'Water the plants', 'demo-garden', '', NULL, $(wall_clock "08:00"), 'w;1;1,4', 0, '$now'),
    ('demo-p4', 'Collect the sales figures', 'demo-report', 'demo-computer', $(wall_clock "-2 days 09:00"), $(wall_clock "+3 days 12:00"), '', 0, '$now'),
    ('demo-p5', 'Buy paint and brushes', 'demo-kitchen', 'demo-hardware', NULL, $(wall_clock "+1 day 17:00"), '', 0, '$now'),
    ('demo-p6', 'Send the invoice to the client', 'demo-work', 'demo-computer', NULL, $(wall_clock "-3 hours"), '', 2, '$now');
SQL
    cat > "$data/settings.dat" <<INI
[General]
app_version=1.11
app_theme=$theme
theme_switch_type=0
application_color=$color
show_welcome_screen=false
app_language=$language
INI
}

# Runs the program until its window can be grabbed, clicks the given point of the window if any and
# types the given text, grabs the window and ends the program.
shoot() {
    local name=$1 theme=$2 color=$3 language=$4 click=${5:-} typed=${6:-}
    local home="$work/$name"
    prepare_home "$home" "$theme" "$color" "$language"
    HOME="$home" XDG_DATA_HOME="$home/.local/share" XDG_CONFIG_HOME="$home/.config" \
        XDG_CACHE_HOME="$home/.cache" LANG=en_US.UTF-8 QT_QUICK_BACKEND=software \
        xvfb-run -a -s "-screen 0 1440x900x24" bash -c '
            "$1" & pid=$!
            window=""
            for attempt in $(seq 1 60); do
                sleep 0.5
                window=$(xwininfo -name Norvel 2>/dev/null | sed -n "s/.*Window id: \(0x[0-9a-f]*\).*/\1/p")
                [[ -n "$window" ]] && break
            done
            # Give the icons and fonts a moment, then take the finished picture.
            sleep 2
            # Clicks are points of the window separated by ";", made in turn. A third number names the
            # mouse button (3 opens a context menu), a fourth the count of clicks (2 for a double click).
            if [[ -n "$window" && -n "$3" ]]; then
                IFS=";" read -ra points <<< "$3"
                for point in "${points[@]}"; do
                    read -r x y button count <<< "$point"
                    xdotool mousemove --window "$window" "$x" "$y" \
                        click --repeat "${count:-1}" --delay 80 "${button:-1}"
                    [[ -z "$button" || "$button" == 1 ]] && xdotool mousemove --window "$window" 600 600
                    sleep 1
                done
                if [[ -n "$4" ]]; then
                    xdotool type --delay 50 "$4"
                    sleep 1
                fi
            fi
            [[ -n "$window" ]] && import -window "$window" "$2"
            kill "$pid"
            wait "$pid" || true
            [[ -n "$window" ]]
        ' screenshot "$program" "$output/$name.png" "$click" "$typed"
    echo "Wrote $output/$name.png"
    # Qt's messages go to the program's log: a QML warning on any screen is worth seeing here.
    grep -h '\.qml:' "$home"/.local/share/Kelmora/Norvel/logs/nv_log*.dat 2>/dev/null | sed "s/^/$name: /" >&2 || true
}

# The side panel's Projects button; its first visit makes the demo folders.
projects_button="45 290"
contexts_button="45 375"
norvel_box_button="45 120"
search_field="910 54"
trash_button="791 54"
shoot main-window-light 1 "#1E88E5" en
shoot main-window-dark 2 "#73ABFC" en
shoot main-window-light-russian 1 "#1E88E5" ru
shoot projects-dark-russian 2 "#73ABFC" ru "$projects_button"
shoot norvel-box-light 1 "#1E88E5" en "$norvel_box_button"
shoot norvel-box-dark 2 "#73ABFC" en "$norvel_box_button"
# Opens the first folder and the second context of the tree, and shows its list.
projects_home="$projects_button;104 96;200 96"
contexts_errands="$contexts_button;104 132;200 132"
shoot projects-light 1 "#1E88E5" en "$projects_home"
shoot projects-dark 2 "#73ABFC" en "$projects_home"
shoot contexts-light 1 "#1E88E5" en "$contexts_errands"
shoot contexts-dark 2 "#73ABFC" en "$contexts_errands"
# A project's task list, under its "3 tasks" header, with the context menu of its first task.
shoot project-row-menu-light 1 "#1E88E5" en "$projects_home;220 132;600 175 3"
# The tool bar's add button, on the inbox, opens the editor of a new inbox task.
add_button="$norvel_box_button;408 54"
shoot task-editor-light 1 "#1E88E5" en "$add_button" "Prepare the quarterly report"
shoot task-editor-dark 2 "#73ABFC" en "$add_button" "Prepare the quarterly report"
# "Create a repetition" turns to a daily rule, whose dates share one day.
shoot task-editor-repetition-light 1 "#1E88E5" en "$add_button;341 452"
# A double click on the first inbox task opens its preview.
first_inbox_task="$norvel_box_button;237 218 1 2"
shoot task-preview-light 1 "#1E88E5" en "$first_inbox_task"
shoot task-preview-dark 2 "#73ABFC" en "$first_inbox_task"
# The inbox list's menu, then its "Sort" entry.
sorting="$norvel_box_button;995 103;880 118"
shoot sorting-popup-light 1 "#1E88E5" en "$sorting"
shoot sorting-popup-dark 2 "#73ABFC" en "$sorting"
# The editor's Metadata tab with the project picker open on its first folder.
project_picker="$add_button;487 181;585 236;446 272"
shoot project-picker-light 1 "#1E88E5" en "$project_picker"
shoot project-picker-dark 2 "#73ABFC" en "$project_picker"
shoot search-light 1 "#1E88E5" en "$search_field" "card"
shoot trash-dark 2 "#73ABFC" en "$trash_button"
