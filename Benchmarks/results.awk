# Prints the rows of results as a table: what was measured, the library's figure and the floor's,
# the ratio of the two, the target, and whether it is met. With `markdown` set, as Markdown.
BEGIN { FS = "\t" }

# Three digits are enough; counts are whole.
function figure(value, unit) {
    if (value == "") return ""
    unit = unit == "" ? "" : " " unit
    if (value == int(value) || value >= 100) return sprintf("%.0f%s", value, unit)
    return sprintf("%.*f%s", value < 1 ? 3 : value < 10 ? 2 : 1, value, unit)
}

function is_met(value, target, words) {
    split(target, words, " ")
    return words[1] == "=" ? value == words[2] : value <= words[2]
}

function heading(section, parts, text) {
    split(section, parts, " [|] ")
    text = parts[2] == "" ? "" : "; floor: " parts[2]
    if (!markdown) {
        printf "\n%s%s\n", parts[1], text
        return
    }
    printf "\n**%s**%s\n\n", parts[1], text
    print "| what | library | floor | ratio | target | |"
    print "| --- | ---: | ---: | ---: | ---: | --- |"
}

function row(what, library, floor, ratio, target, verdict) {
    printf markdown ? "| %s | %s | %s | %s | %s | %s |\n" : "  %-50s %11s %11s %7s %9s  %s\n", what,
        library, floor, ratio, target, verdict
}

NR == 1 && !markdown { row("", "library", "floor", "ratio", "target", "") }
$1 != section { heading(section = $1) }
{
    verdict = ""
    if ($7 != "") {
        verdict = is_met($6 == "" ? $4 : $6, $7) ? "met" : "MISSED"
        verdicts[verdict]++
    }
    row($2, figure($4, $3), figure($5, $3), $6 == "" ? "" : sprintf("%.2f", $6), $7, verdict)
}
END { printf "\n%d targets met, %d missed.\n", verdicts["met"], verdicts["MISSED"] }
