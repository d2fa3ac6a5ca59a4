# Shows CSV on a terminal as an aligned table: awk -f tools/align_csv.awk -v rows=10 FILE
# Cells are cut at commas: it is meant for output without quoted cells.
BEGIN { FS = "," }
rows && NR > rows + 1 { exit }
{
    for (i = 1; i <= NF; i++) {
        cell[NR, i] = $i
        if (length($i) > width[i]) width[i] = length($i)
    }
    if (NF > columns) columns = NF
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
