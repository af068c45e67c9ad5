# Shapes, text, images and an animation.
example_class=com.nuvik.examples.Drawing

play() {
    wait_said '^frame 20'
    tap $((width / 2)) $((height / 2)) && wait_said '^stopped'
    screenshot
    tap $((width / 2)) $((height / 2)) && wait_said '^moving'
    close_window
}
