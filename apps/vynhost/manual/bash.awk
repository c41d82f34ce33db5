# Completion for bash, from the table of commands.sh.
BEGIN { FS = "\t" }

function spellings(list) {
    gsub(/,/, " ", list)
    return list
}

function pattern(list) {
    gsub(/,/, " | ", list)
    return list
}

# What the shell offers for an argument of that kind.
function offer(kind) {
    if (kind ~ /^words /)
        return "_vynhost_offer_words \"" substr(kind, 7) "\"; "
    return kind == "other" ? "" : "_vynhost_offer_" kind "; "
}

$1 == "C" { name = $2 == "-" ? "" : $2; order[++count] = name }
$1 == "C" && name != "" {
    parent = name
    last = name
    if (!sub(/ [^ ]+$/, "", parent))
        parent = ""
    sub(/.* /, "", last)
    words[parent] = words[parent] " " last
    paths = paths (paths == "" ? "" : " | ") "\"" parent " " last "\""
}
$1 == "A" { positional[name] = offer($4) }
$1 == "O" { options[name] = options[name] " " spellings($3) }
$1 == "O" && $5 != "none" {
    arguments[name] = arguments[name] sprintf("        %s) %sreturn ;;\n", pattern($3), offer($5))
}

END {
    print "# Completion of vynhost for bash; made from what the program says of itself.\n"
    print "_vynhost_offer_words() { mapfile -t COMPREPLY < <(compgen -W \"$1\" -- \"$current\"); }"
    print "_vynhost_offer_dir() { compopt -o filenames; mapfile -t COMPREPLY < <(compgen -d -- \"$current\"); }"
    print "_vynhost_offer_file() { compopt -o filenames; mapfile -t COMPREPLY < <(compgen -f -- \"$current\"); }"
    # A name is somebody else's text: the shell must not expand it.
    print "_vynhost_offer_plugin() {"
    print "    local name"
    print "    _vynhost_offer_file"
    print "    while IFS= read -r name; do"
    print "        [[ $name == \"$current\"* ]] && COMPREPLY+=(\"$name\")"
    print "    done < <(vynhost list --json 2>/dev/null | sed -n 's/^ *\"name\": \"\\([^\"\\\\]*\\)\",*$/\\1/p' | sort -u)"
    print "}\n"
    print "_vynhost() {"
    print "    local command=\"\" current=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]} i"
    print "    COMPREPLY=()"
    print "    for ((i = 1; i < COMP_CWORD; ++i)); do"
    print "        case \"$command ${COMP_WORDS[i]}\" in"
    print "        " paths ") command=\"${command:+$command }${COMP_WORDS[i]}\" ;;"
    print "        esac"
    print "    done"
    print "    case $command in"
    for (i = 1; i <= count; ++i) {
        name = order[i]
        print "    \"" name "\")"
        if (arguments[name] != "")
            printf "        case $before in\n%s        esac\n", arguments[name]
        printf "        [[ $current == -* ]] && _vynhost_offer_words \"%s\" && return\n", substr(options[name], 2)
        if (words[name] != "")
            printf "        _vynhost_offer_words \"%s\"\n", substr(words[name], 2)
        else if (positional[name] != "")
            printf "        %s\n", positional[name]
        print "        ;;"
    }
    print "    esac\n}\ncomplete -F _vynhost vynhost"
}
