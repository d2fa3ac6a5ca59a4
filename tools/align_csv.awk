# Shows CSV on a terminal as an aligned table: awk -f tools/align_csv.awk -v rows=10 FILE
# A cell in quotes may hold commas; it holds no line end.
rows && NR > rows + 1 { exit }
{
    count = split_cells($0)
    for (i = 1; i <= count; i++) {
        cell[NR, i] = parts[i]
        if (length(parts[i]) > width[i]) width[i] = length(parts[i])
    }
    if (count > columns) columns = count
    lines = NR
}
END {
    for (line = 1; line <= lines; line++) {
        text = ""
        for (i = 1; i <= columns; i++) text = text sprintf("%-" width[i] + 2 "s", cell[line, i])
        sub(/ +$/, "", text)
        print text
    }
}
# Parts a row into parts[1], parts[2] and so on; gives their number.
function split_cells(row,    at, character, quoted, count) {
    count = 1
    parts[1] = ""
    for (at = 1; at <= length(row); at++) {
        character = substr(row, at, 1)
        if (character == "\"" && quoted && substr(row, at + 1, 1) == "\"") {
            parts[count] = parts[count] character
            at++
        } else if (character == "\"") quoted = !quoted
        else if (character == "," && !quoted) parts[++count] = ""
        else parts[count] = parts[count] character
    }
    return count
}
