#!/usr/bin/env bash
# Baut in einen leeren Ordner ein und prüft, was Desktops lesen: Desktop-Datei,
# AppStream-Beschreibung, MIME-Typ für *.nec und das Symbol.
set -euo pipefail
bau="$1"
ziel=$(mktemp -d)
trap 'rm -rf "$ziel"' EXIT
DESTDIR="$ziel" cmake --install "$bau" --prefix /usr >/dev/null
p="$ziel/usr"
test -x "$p/bin/wellenwerk"
test -x "$p/bin/wellenwerk-cli"
desktop-file-validate "$p/share/applications/de.wellenwerk.Wellenwerk.desktop"
grep -qx 'MimeType=text/x-nec;' "$p/share/applications/de.wellenwerk.Wellenwerk.desktop"
appstreamcli validate --no-net "$p/share/metainfo/de.wellenwerk.Wellenwerk.metainfo.xml"
test -s "$p/share/icons/hicolor/scalable/apps/de.wellenwerk.Wellenwerk.svg"
update-mime-database "$p/share/mime"
grep -q '^text/x-nec:\*\.nec' "$p/share/mime/globs"
grep -q '^text/x-nec text/plain' "$p/share/mime/subclasses"
echo "Einbau in Ordnung"
