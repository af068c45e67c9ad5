# A button that counts its taps.
example_class=com.nuvik.examples.Tap

play() {
    wait_said '^button at '
    # shellcheck disable=SC2046 # a column and a row
    tap $(sed -n 's/^button at //p' "$output")
    wait_said '^Tapped once'
    screenshot
    close_window
}
