# Steps of a script, and a table of their times at its end, also when a step fails. Sourced by the other
# scripts; a script that calls others shows the steps of all in one table.

steps_file=${ORRERY_STEPS:-}
if [ -z "$steps_file" ]; then
    steps_file=$(mktemp)
    export ORRERY_STEPS=$steps_file
    steps_are_ours=yes
fi
steps_last=
steps_begin=$SECONDS

# step NAME: ends the current step and begins a new one.
step() {
    end_step
    steps_last=$*
    steps_begin=$SECONDS
    printf '\n== %s (%s)\n' "$*" "$(date +%H:%M:%S)"
}

end_step() {
    [ -z "$steps_last" ] || printf '%s\t%s\n' $((SECONDS - steps_begin)) "$steps_last" >>"$steps_file"
    steps_last=
}

show_steps() {
    end_step
    [ "${steps_are_ours:-}" = yes ] || return 0
    printf '\n== Times\n'
    awk -F'\t' '{ printf "%3d:%02d  %s\n", $1 / 60, $1 % 60, $2; sum += $1 }
        END { printf "%3d:%02d  in all\n", sum / 60, sum % 60 }' "$steps_file"
    rm -f "$steps_file"
}
trap show_steps EXIT
