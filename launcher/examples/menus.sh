# A whole application window: menus, accelerators, scroll bars, fonts, colours, a modal child shell.
example_class=com.nuvik.examples.Menus

play() {
    wait_said '^ready'
    key F1 && wait_said '^coloured'
    key ctrl+3 && wait_said '^Large'
    tap_and_hold 172 $((task_bar + 100)) && tap 190 $((task_bar + 110)) && wait_said '^all marked'
    tap 190 $((height - 43)) && wait_said '^scrolled to 30' # the lower arrow of the list's bar
    tap 15 $((height - menu_bar / 2)) && tap 40 $((height - menu_bar - 26)) && wait_said '^about shown'
    tap 206 92 && wait_said '^about closed'
    tap 90 $((height - menu_bar / 2)) # the second menu, for the picture
    screenshot
    key Escape
    key ctrl+shift+x
}
