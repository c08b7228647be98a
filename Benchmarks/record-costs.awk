# What a record costs, counted: every line is what was counted, the kind of call, N or 2 N calls,
# and the count. The difference is what N calls take. Prints rows of the table of results.
BEGIN {
    FS = OFS = "\t"
    counted = "Counted for each record"
    share = "The library's own share of a record: its instructions but for those of the write"
}

!(($1, $2) in first) { first[$1, $2] = $4; calls[$1, $2] = $3; kinds[$1, ++count[$1]] = $2; next }
{ cost[$1, $2] = ($4 - first[$1, $2]) / ($3 - calls[$1, $2]) }

function most(what, pattern, i, kind, value) {
    value = 0
    for (i = 1; i <= count[what]; i++) {
        kind = kinds[what, i]
        if (kind ~ pattern && cost[what, kind] > value) value = cost[what, kind]
    }
    return value
}

function row(section, what, unit, value, target) {
    print section, what, unit, value, "", "", target
}

END {
    for (i = 1; i <= count["instructions"]; i++) {
        kind = kinds["instructions", i]
        if (kind ~ /^UT/)
            row(share, kind, "", cost["instructions", kind] - cost["instructions", "write(2)"], "")
    }
    row(counted, "system calls, the most of all kinds", "", most("system calls", "^UT"), "= 1")
    row(counted, "allocations, short strings", "", most("allocations", "^UT[A-Za-z]*, [io]"), "= 0")
    row(counted, "allocations, 512-byte values", "", most("allocations", " 512 "), "")
}
