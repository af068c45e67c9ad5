# A button that counts its taps.
example_class=com.nuvik.examples.Tap

play() {
    wait_said '^button at '
    tap $(sed -n 's/^button at //p' "$output")
    wait_said '^Tapped once'
    screenshot
    close_window
}
