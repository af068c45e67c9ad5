# A tune that is played, looped and stopped.
example_class=com.nuvik.examples.Sound

# press BUTTON LINE: taps the button and waits until the program has said the line.
press() {
    # shellcheck disable=SC2046 # a column and a row
    tap $(sed -n "s/^$1 at //p" "$output")
    wait_said "^$2\$"
}

play() {
    wait_said '^Ready$'
    press Play 'Playing once'
    press 'Three times' 'Playing three times'
    press Stop Stopped
    press Loop 'Playing until it is stopped'
    screenshot
    press Stop Stopped
    close_window
}
