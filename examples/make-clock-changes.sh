#!/usr/bin/env bash
# Writes clock-changes.csv to standard output: every change of clocks from 2000 to 2025 in each zone of
# the tz database, as this system has it installed (the file beside this script was made from version
# 2025b). Dates and times are those of Greenwich, dates month first.
set -euo pipefail
export LC_ALL=C
zones=${ZONEINFO:-/usr/share/zoneinfo}

echo 'Date,Time,Country,Zone,Place,"Hours before","Hours after",Summer'
grep -v '^#' "$zones/zone1970.tab" | while IFS=$'\t' read -r countries _ zone place; do
    code=${countries%%,*}
    country=$(awk -F '\t' -v code="$code" '$1 == code { print $2 }' "$zones/iso3166.tab")
    zdump -v -c 2000,2026 "$zone" | awk -v country="$country" -v place="${place:-}" '
        function quoted(text) { return text ~ /[ ,"]/ ? "\"" text "\"" : text }
        BEGIN { split("Jan Feb Mar Apr May Jun Jul Aug Sep Oct Nov Dec", names)
                for (i in names) month[names[i]] = i }
        $NF !~ /^gmtoff=/ || $6 < 2000 || $6 > 2025 { next }
        { offset = substr($NF, 8) / 3600; summer = substr($(NF - 1), 7) + 0 }
        # The database tells the last second before a change, and then the change.
        $5 ~ /:59$/ { before = offset; next }
        { split($5, time, ":")
          printf "%04d%02d%02d%s\t%d/%d/%d,%d:%s,%s,%s,%s,%s,%s,%s\n",
              $6, month[$3], $4, $1, month[$3], $4, $6, time[1], time[2], quoted(country), $1,
              quoted(place), before, offset, summer ? "TRUE" : "FALSE" }'
done | sort | cut -f 2-
