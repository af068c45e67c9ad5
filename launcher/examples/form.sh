# An inspection form: texts, choice, buttons, lists, clipboard, file dialogs, all by keyboard.
example_class=com.nuvik.examples.Form

# enter TEXT KEY LINE [COUNT]: types a text and a key and waits until the program has said the line,
# COUNT times so far.
enter() {
    xdotool type -- "$1"
    key "$2" && wait_said "^$3\$" "${4:-1}"
}

# choose_file TITLE NAME: in the dialog with the title, when it is there.
choose_file() {
    wait_shown "$1"
    xdotool type -- "$2"
    key Return
}

# answer QUESTION COUNT KEYS...: when the program asks it for the COUNTth time. It says so as soon as keys
# reach the question; its window is there before, and one that was answered a little longer.
answer() {
    wait_said "^$1[?]\$" "$2"
    key "${@:3}"
}

fill_in() {
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
}

play() {
    local saved='^Saved .My Documents.mill lane.txt$'
    rm -f "${storage:-$device/storage}/My Documents/mill lane.txt"
    wait_said '^ready$'
    key ctrl+s && wait_said '^The site is missing$'
    fill_in
    key ctrl+s && choose_file 'Save As' 'mill lane' && wait_said "$saved"
    # What was changed since is saved before the form goes.
    wait_shown Inspection
    enter ' East' Tab 'Site: Mill Lane 4 East'
    key ctrl+n && answer 'Save the form first' 1 space
    choose_file 'Save As' 'mill lane' && wait_said "$saved" 2
    wait_said '^New form$' 2
    # Another form does not take its place unasked, and is discarded.
    wait_shown Inspection
    enter 'Mill Lane 5' Tab 'Site: Mill Lane 5'
    key ctrl+s && choose_file 'Save As' 'mill lane'
    answer 'Replace the other form' 1 Tab space && wait_said '^Not saved$'
    key ctrl+n && answer 'Save the form first' 2 Tab space && wait_said '^New form$' 3
    wait_shown Inspection
    key ctrl+o && choose_file Open 'mill lane.txt'
    wait_said '^Opened .My Documents.mill lane.txt$'
    screenshot
    key ctrl+q
}
