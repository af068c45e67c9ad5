# A whole application window: menus, accelerators, scroll bars, fonts, colours, a modal child shell.
example_class=com.nuvik.examples.Menus

play() {
    wait_said '^ready'
    key F1 && wait_said '^coloured'
    key ctrl+3 && wait_said '^Large'
    x=$(scaled 172)
    y=$((task_bar + $(scaled 100)))
    tap_and_hold "$x" "$y" && tap $((x + 18)) $((y + 10)) && wait_said '^all marked'
    tap $(($(scaled 198) - 8)) $((height - $(scaled 36) - 7)) && wait_said '^scrolled to 30' # the lower arrow of the list's bar
    tap 15 $((height - menu_bar / 2)) && tap 40 $((height - menu_bar - 26)) && wait_said '^about shown'
    tap $(($(scaled 220) - 14)) $(($(scaled 80) + 12)) && wait_said '^about closed'
    tap "$(scaled 75)" $((height - menu_bar / 2)) # the second menu, for the picture
    screenshot
    key Escape
    key ctrl+shift+x
}
