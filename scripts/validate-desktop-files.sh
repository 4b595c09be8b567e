#!/usr/bin/env bash
# Validates the Linux desktop files: the menu entry, the AppStream metadata
# and the shared-mime-info package that declares .qvn documents. Exits 77
# (ctest: skipped) when a validator is missing, except under CI, where that
# is a failure. scripts/install-deps.sh installs the validators.
set -euo pipefail
dir=$(cd "$(dirname "$0")/../src/resources/desktop" && pwd)
id=example.verdane.quorvane

for tool in desktop-file-validate appstreamcli update-mime-database; do
    if ! command -v "$tool" >/dev/null; then
        echo "$tool is not installed" >&2
        [[ -n "${CI:-}" ]] && exit 1
        exit 77
    fi
done

desktop-file-validate "$dir/$id.desktop"
appstreamcli validate --no-net "$dir/$id.metainfo.xml"

mime=$(mktemp -d)
trap 'rm -rf "$mime"' EXIT
mkdir "$mime/packages"
cp "$dir/$id.mime.xml" "$mime/packages/"
update-mime-database "$mime" >/dev/null 2>&1 || update-mime-database "$mime"
grep -q ':application/x-quorvane-session:\*\.qvn$' "$mime/globs2" \
    || { echo "the mime package declares no *.qvn documents" >&2; exit 1; }
grep -qx 'MimeType=application/x-quorvane-session;' "$dir/$id.desktop" \
    || { echo "the desktop entry does not open .qvn documents" >&2; exit 1; }
echo "desktop files are valid"
