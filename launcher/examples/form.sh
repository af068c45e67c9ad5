# An inspection form: texts, choice, buttons, lists, clipboard, file dialogs, all by keyboard.
example_class=com.nuvik.examples.Form

# enter TEXT KEY LINE: types a text and a key and waits until the program has said the line.
enter() {
    xdotool type -- "$1"
    key "$2" && wait_said "^$3\$"
}

play() {
    wait_said '^ready$'
    key ctrl+s && wait_said '^The site is missing$'
    enter 'Mill Lane 4' Tab 'Site: Mill Lane 4'
    enter 'R. Moss' Tab 'Inspector: R. Moss'
    key Down && wait_said '^Kind: Warehouse$'
    key Tab && key Tab && key space && wait_said '^Condition: Fair$'
    key Tab && key Tab && key space && wait_said '^Urgent: yes$'
    key Tab
    enter 'Loose cable' Return 'added Loose cable'
    enter 'Dust' Return 'added Dust'
    enter 'Door sticks' Return 'added Door sticks'
    key Tab && key Tab && key Down && key space && wait_said '^selected 1$'
    key Tab && key space && wait_said '^removed 1$'
    key Tab # to the notes: nothing is left to remove
    xdotool type 'Call the owner.' && key Return
    key ctrl+c && wait_said '^Copied$'
    key ctrl+v && wait_said '^Pasted$'
    key Tab && wait_said '^Notes: Call the owner. / Call the owner. / $'
    key ctrl+s && wait_said '^Save the form$'
    enter 'mill lane' Return 'Saved .My Documents.mill lane.txt'
    key ctrl+n && wait_said '^New form$'
    key ctrl+o && wait_said '^Open a form$'
    enter 'mill lane.txt' Return 'Opened .My Documents.mill lane.txt'
    screenshot
    key ctrl+q
}
