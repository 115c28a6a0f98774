#!/usr/bin/env bash
# Installs the Debian 12 packages that building, running, testing or formatting Norvel needs, and
# only those that are missing. Usage: scripts/install-deps.sh [build] [test] [dev] [screenshots]
set -euo pipefail

build_packages=(
    cmake make g++ sqlite3 libsqlite3-dev pkg-config
    qtbase5-dev qtbase5-dev-tools qtdeclarative5-dev qtquickcontrols2-5-dev qttools5-dev qttools5-dev-tools
    libqt5sql5-sqlite libqt5sql5-psql libqt5networkauth5-dev libqt5svg5-dev
    libcpp-httplib-dev libsodium-dev libcurl4-openssl-dev
    qml-module-qtquick2 qml-module-qtquick-window2 qml-module-qtquick-controls qml-module-qtquick-controls2
    qml-module-qtquick-dialogs qml-module-qtquick-layouts qml-module-qtgraphicaleffects
    qml-module-qt-labs-settings qml-module-qtqml qml-module-qtquick-templates2
    qttranslations5-l10n
    xdg-utils
)
test_packages=(
    dbus-daemon dbus-bin tzdata libbenchmark-dev postgresql
)
dev_packages=(
    clang-format git
)
screenshot_packages=(
    xvfb xauth x11-utils imagemagick xdotool
)

wanted=()
for group in "${@:-build}"; do
    case "$group" in
        build) wanted+=("${build_packages[@]}") ;;
        test) wanted+=("${test_packages[@]}") ;;
        dev) wanted+=("${dev_packages[@]}") ;;
        screenshots) wanted+=("${screenshot_packages[@]}") ;;
        *) echo "unknown package group: $group" >&2; exit 2 ;;
    esac
done

missing=()
for package in "${wanted[@]}"; do
    status=$(dpkg-query -W -f='${Status}' "$package" 2>/dev/null || true)
    [[ "$status" == "install ok installed" ]] || missing+=("$package")
done

if [[ ${#missing[@]} -eq 0 ]]; then
    exit 0
fi

echo "Installing missing packages: ${missing[*]}"
sudo=()
if [[ $(id -u) -ne 0 ]]; then
    sudo=(sudo)
fi
export DEBIAN_FRONTEND=noninteractive
"${sudo[@]}" apt-get update -q
"${sudo[@]}" apt-get install -y -q --no-install-recommends "${missing[@]}"
