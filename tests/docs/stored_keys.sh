#!/usr/bin/env bash
# Holds docs/formats.md to the keys that the sources store, section by section: each word in a source that looks like a
# key must stand in the first column of a table of its section, or be named here as none, and each such key in a source.
# Usage: stored_keys.sh TOP-FOLDER
set -euo pipefail
cd "$1"
export LC_ALL=C.UTF-8
page=docs/formats.md
failed=0

fail() {
  printf '%s\n' "$*"
  failed=1
}

# stored FILE…: the texts in quotes that look like keys or names of files, each once. Numbers at the end are dropped.
stored() {
  sed -E '/^[[:space:]]*(#|\/\/)/d' "$@" | grep -oE '"[^"]*"' |
    sed -nE 's/^"(@?[A-Za-z][A-Za-z0-9_-]*(\.(xml|lock))?)"$/\1/p' | sort -u
}

# section HEADING: the lines below it, up to the next heading of its rank or a higher one.
section() {
  awk -v heading="$1" '
    $0 ~ /^#+ / { rank = index($0, " "); if (inside && rank <= own) inside = 0 }
    $0 == heading { inside = 1; own = rank }
    inside' "$page"
}

# documented: of the section in standard input the words in the first column of each table of keys, the keys of JSON that
# is shown, and names of files. A number at the end, or k, stands for any.
documented() {
  awk -F'|' '
    !/^\|/ { keys = 0 }
    /^\| *(Key|Attribute|Element|Placeholder)/ { keys = 1 }
    keys { print $2 }
    { rest = $0 }
    { while (match(rest, /`[A-Za-z.]+\.(xml|lock)`|"[a-z]+":/)) { print substr(rest, RSTART, RLENGTH); rest = substr(rest, RSTART + RLENGTH) } }
  ' | grep -oE '`[^`]+`|"[a-z]+"' | tr -d '`"' | sed -E 's/^(.*[a-z])0$/\1/; s/_k$/_/' | sort -u
}

covered=()

# compare HEADING FILES NONE: NONE are words in the files that are no keys.
compare() {
  local text in_code in_page word
  covered+=($2)
  text=$(section "$1")
  [[ -n $text ]] || fail "$page: there is no section \"$1\""
  in_code=$(stored $2 | grep -vxF -f <(printf '%s\n' $3) || true)
  in_page=$(documented <<<"$text")
  for word in $(comm -23 <(printf '%s\n' "$in_code") <(printf '%s\n' "$in_page")); do
    fail "$(grep -lF "\"$word\"" $2 | head -n 1) has '$word', of which \"$1\" in $page doesn't tell"
  done
  for word in $(comm -13 <(printf '%s\n' "$in_code") <(printf '%s\n' "$in_page")); do
    fail "$page: \"$1\" tells of '$word', which no source of it has"
  done
}

compare '## The property list' platform/vyncore/proplist/PropListText.cpp 'proplist version true'
compare '## The preset' host/src/presets/PresetData.cpp ''
compare "## The catalogue's descriptors" \
  'host/src/catalogue/AudioFilterDescriptor.cpp host/src/catalogue/AudioFilterDescriptorManager.cpp' ''
compare '## The channel map' 'host/src/ChannelMapStorage.cpp host/src/AudioFilterChannelMapping.cpp' ''
compare '## The bus configuration' host/src/BusConfigurationUtilities.cpp ''
compare '## The state file of vynhost' apps/vynhost/StateFile.cpp ''
compare '## The automation file of vynhost' apps/vynhost/AutomationJSON.cpp ''
compare '## The plug-in settings' \
  'host/src/inventory/PluginModuleInfoManager.h host/src/inventory/PluginModuleInfoManagerStorage.cpp
   host/src/inventory/PluginModuleInfo.cpp host/src/catalogue/AudioFilterDescriptorManager.cpp' 'PluginModuleInfoManager'
compare '## The ban lists' \
  'host/src/inventory/BannedPluginManager.h host/src/inventory/BannedPluginManager.cpp
   host/src/inventory/UnsupportedVSTParseHandler.cpp' 'BannedPluginManager'
compare '## The private plug-in configuration' host/src/inventory/PrivatePluginConfig.cpp 'vst3'
compare '## What vynhost keeps' \
  'apps/vynhost/ScanRecords.cpp apps/vynhost/PrivateConfiguration.cpp apps/vynhost/StoredFiles.cpp' \
  'VYNHOST_HOME vynhost opening filed refused banned'

# What stores something under keys that others give it.
passed_on='platform/vyncore/(proplist|serialization)/|HostAttributeList|presets/PresetList\.cpp|ScanLedger\.cpp'
for file in $(grep -rlE '(->|\.|::)(SetValue|CreateList|AddToObject)\(|"[A-Za-z]+\.(xml|lock)"' \
  platform host/src apps --include='*.cpp' --include='*.h' | grep -vE "$passed_on"); do
  [[ " ${covered[*]} " == *" $file "* ]] || fail "$file stores something, and no section of $page is held to it"
done
exit "$failed"
