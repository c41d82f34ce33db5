# Completion for zsh, from the table of commands.sh.
BEGIN { FS = "\t" }

# Text inside single quotes and a bracketed description.
function quoted(text) {
    gsub(/[\]\[:\\]/, "\\\\&", text)
    gsub(/'/, "'\\''", text)
    return text
}

function action(kind) {
    if (kind ~ /^words /)
        return "(" substr(kind, 7) ")"
    if (kind == "dir")
        return "_files -/"
    if (kind == "plugin")
        return "_vynhost_plugins"
    return kind == "file" ? "_files" : " "
}

function function_of(name) {
    gsub(/ /, "_", name)
    return name == "-" ? "_vynhost" : "_vynhost_" name
}

function option(list, argument, kind, told,   parts, count, i, text) {
    count = split(list, parts, ",")
    for (i = 1; i <= count; ++i) {
        text = text " '" (told ~ /several times/ ? "*" : "(" parts[1] (count > 1 ? " " parts[2] : "") ")") parts[i]
        text = text "[" quoted(told) "]" (kind == "none" ? "" : ":" quoted(argument) ":" action(kind)) "'"
    }
    return text
}

$1 == "C" { order[++count] = $2 }
$1 == "C" && $2 != "-" {
    parent = $2
    last = $2
    sub(/.* /, "", last)
    if (!sub(/ [^ ]+$/, "", parent))
        parent = "-"
    commands[parent] = commands[parent] " '" last ":" quoted($4) "'"
    calls[parent] = calls[parent] "    " last ") " function_of($2) " ;;\n"
}
$1 == "A" { arguments[$2] = arguments[$2] " '*:" quoted($3) ":" action($4) "'" }
$1 == "O" { arguments[$2] = arguments[$2] option($3, $4, $5, $9) }

function print_function(name) {
    print "\n" function_of(name) "() {"
    if (commands[name] == "")
        print "  _arguments" arguments[name] "\n}"
    else {
        print "  local line state\n  _arguments -C" arguments[name] " '1: :->command' '*:: :->below'"
        print "  case $state in\n  command) local -a commands=(" substr(commands[name], 2) "); _describe command commands ;;"
        print "  below)\n    case $line[1] in\n" calls[name] "    esac ;;\n  esac\n}"
    }
}

END {
    print "#compdef vynhost\n# Completion of vynhost for zsh; made from what the program says of itself.\n"
    print "_vynhost_plugins() {\n  local -a names"
    print "  names=(${(fu)\"$(vynhost list --json 2>/dev/null | sed -n 's/^ *\"name\": \"\\([^\"\\\\]*\\)\",*$/\\1/p')\"})"
    print "  _alternative 'files:module:_files' 'names:plug-in:compadd -a names'\n}"
    for (i = count; i >= 1; --i)
        print_function(order[i])
    print "\n_vynhost \"$@\""
}
