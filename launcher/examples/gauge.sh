# A widget of a companion library.
example_class=com.nuvik.examples.Gauge
example_options=(-companion:gauge.dll=com/nuvik/examples/Gauge)

play() {
    wait_said '^ready'
    tap "$(scaled 150)" $((task_bar + $(scaled 75))) && wait_said '^level 6'
    screenshot
    close_window
}
