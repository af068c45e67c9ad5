# Shapes, text, images and an animation.
example_class=com.nuvik.examples.Drawing

play() {
    wait_said '^frame 20'
    tap 120 250 && wait_said '^stopped'
    screenshot
    tap 120 250 && wait_said '^moving'
    close_window
}
