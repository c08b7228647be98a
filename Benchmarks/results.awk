# Prints the results as a table: what was measured, of the library and of the floor, the ratio of
# the two, and what the library takes beyond the floor.
BEGIN { printf "\n%-46s %12s %12s %8s %12s\n", "what", "library", "floor", "ratio", "beyond" }
{
    printf "%-46s %12.2f", $1 " [" $2 "]", $3
    if ($4 > 0) printf " %12.2f %8.2f %12.2f", $4, $3 / $4, $3 - $4
    print ""
}
