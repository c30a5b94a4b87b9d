# What the demo shows: sourced by scripts/demo, scripts/guide-pictures and the test of its pictures, after
# machine.sh. Requires `programs`, the folder of the built programs, and `out`, the folder of the ledger and the
# pictures.

# Makes a fresh ledger out of the sample statement.
fill_ledger() {
    ledger="$out/ledger.db"
    mkdir -p "$out"
    rm -f "$ledger" "$ledger"-*
    say "Importing the sample statement ..."
    "$programs/trademodule" --ledger "$ledger" import "$project_root/examples/statement.csv"
    terminal=("$programs/tradeterminal" --data "$project_root/examples" --ledger "$ledger")
}

# Orders of the days that are replayed. A bar deals at most a quarter of its volume: the large ones are
# dealt in parts. Two lie beyond the price scale.
morning=(
    --order "0935 sell 300 51.30" --order "0942 sell 100 52.80" --order "0945 buy 3000 50.70"
    --order "1001 buy 1000 48.00" --order "1008 sell 200 51.40"
)
playing=(
    --order "1010 buy 12000 50.86" --order "1012 sell 500 51.15" --order "1016 buy 1000 50.42"
)
afternoon=(
    --order "1042 buy 1000 50.40" --order "1316 buy 14000 50.50" --order "1334 sell 1900 50.64"
)

# practise DAY: begins anew the practice of a recorded day, with the cash and the holdings of the ledger. A replay
# plays on no other account.
practise() {
    practice="$out/practice.db"
    rm -f "$practice" "$practice"-*
    "$programs/trademodule" --ledger "$practice" practice --day "$1" --copy "$ledger" >/dev/null
}

# Becomes the terminal.
open_window() {
    practise 20230711
    exec "${terminal[@]}" --ledger "$practice" --code 600536 --day 20230711 --overlays cost,trades,orders \
        --replay 20 --replay-to 1008 "${morning[@]}" "${playing[@]}"
}

# picture NAME OPTION...
picture() {
    local file="$out/$1.png"
    shift
    "${terminal[@]}" --lang zh --snapshot "$file" --size 1600x900 "$@" || fail "could not render $file"
    say "$file"
}

# replay NAME DAY OPTION...: a picture of a day that is practised
replay() {
    local name="$1" day="$2"
    shift 2
    practise "$day"
    picture "$name" --ledger "$practice" --day "$day" --replay 60 --period minute "$@"
}

# One picture is named as each overlay. The combined trade points all stand on the first bar that is loaded:
# they are seen on a day in the account's first week, which the chart shows whole.
render_pictures() {
    picture cost --code 600536 --overlays cost
    picture cost-light --code 000001 --overlays cost --theme light
    picture trades --code 600536 --overlays cost,trades
    picture trades-light --code 000001 --overlays cost,trades --theme light
    picture combined-cost --code 600536 --overlays combined-cost
    picture combined-trades --code 000001 --period minute --day 20180104 --overlays combined-trades
    picture overlays --code 600536 --overlays cost,trades,combined-cost,combined-trades
    replay orders 20230711 --code 600536 --overlays cost,orders --replay-to 1335 \
        "${morning[@]}" "${afternoon[@]}"
    replay trades-minutes 20230711 --code 600536 --trades on --replay-to 1335 \
        "${morning[@]}" "${afternoon[@]}"
    replay practice 20230711 --code 600536 --overlays cost --trades on --replay-to 1042 "${morning[@]}"
    replay orders-light 20180115 --code 000001 --overlays orders --replay-to 1120 --theme light \
        --order "0936 buy 6000 13.65" --order "0944 sell 2000 13.95" --order "0950 buy 3000 13.40" \
        --order "1004 buy 20000 13.92" --order "1008 sell 3000 14.10" --order "1020 sell 1000 14.60" \
        --order "1045 buy 5000 13.80" --order "1110 sell 1000 14.18"
}

# A data folder with the bars of the examples, and what happened to 000001.
data_with_actions() {
    local data="$out/adjusted"
    mkdir -p "$data/actions"
    ln -sfn "$project_root/examples/securities.csv" "$data/securities.csv"
    ln -sfn "$project_root/examples/daily" "$data/daily"
    cat >"$data/actions/000001.csv" <<'CSV'
exdate,dividend,bonus
20130620,0.17,0.6
20140612,0.16,0.2
20150413,0.174,0.2
20160616,0.153,0.2
CSV
    printf '%s\n' "$data"
}

# Those that only the guides show.
render_guide_pictures() {
    picture results --code 600519 --overlays cost,trades --results security
    picture adjusted --data "$(data_with_actions)" --code 000001 --period month --overlays cost --adjusted
}
