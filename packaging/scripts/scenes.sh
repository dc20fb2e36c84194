# The scenes of screenshots.sh: each starts the program anew, leads it to what a
# picture is to show, and ends it.
# shellcheck shell=bash disable=SC2154

first_start() {
    fresh_files none
    start
    window_picture erster-start
    end_program
    fresh_files
}

browser() {
    fresh_files
    start
    window_picture browserfenster
    picture toolbar "$left" $((top + 20)) 420 70
    local menu
    for menu in datei:d extras:x fenster:f; do
        keys "alt+${menu#*:}"
        picture "menue-${menu%:*}" $((left - 1)) $((top - title_bar)) 440 270
        keys Escape Escape
    done
    open www.example.org/umgebung.html 'In der Umgebung'
    keys ctrl+l
    xdotool type --delay 20 example
    picture vorschlaege "$left" "$top" 700 380
    keys Escape
    open 'nicht da' 'Keine gültige Adresse'
    picture keine-adresse "$left" "$top" 700 400
    end_program
}

page() {
    fresh_files
    start
    click $((left + 600)) $((top + 560))
    keys ctrl+f
    xdotool type --delay 20 See
    picture suchen $((left - border)) $((top - title_bar)) 902 300
    keys Escape
    click $((left + 420)) $((top + 230)) 3
    picture menue-seite $((left + 400)) $((top + 170)) 420 440
    keys Escape
    click $((left + 88)) $((top + 223)) 3
    picture menue-link "$left" $((top + 150)) 420 240
    keys Escape
    keys ctrl+p
    dialog_picture drucken Drucken
    keys Escape
    no_window Drucken
    click $((left + 560)) $((top + 300)) 3
    keys p
    dialog_picture pdf-speichern 'Als PDF speichern'
    keys Escape
    no_window 'Als PDF speichern'
    find_window 'Tessera.*'
    place 20 30
    open www.example.org/umgebung.html 'In der Umgebung'
    click $((left + 90)) $((top + 246))
    wait_for_light 1270 500
    take vollbild 0 0 1280 1024 -resize 50%
    keys Escape
    keys ctrl+l
    enter 'javascript:for(;;);'
    sleep 8
    picture haengt $((left - border)) $((top - title_bar)) 902 420
    keys ctrl+l
    enter chrome://crash
    picture absturz $((left - border)) $((top - title_bar)) 902 420
    end_program
}

questions() {
    local site=http://www.example.org
    fresh_files
    start
    open www.example.org/gaestebuch.html Gästebuch
    click $((left + 67)) $((top + 353))
    find_window "$site"
    keys Return
    no_window "$site"
    click $((left + 160)) $((top + 353))
    question meldung-seite "$site"
    click $((left + 215)) $((top + 388))
    question anderes-programm 'Anderes Programm'
    click $((left + 230)) $((top + 278))
    xdotool type --delay 20 'Tage am Wasser'
    keys F5
    question seite-verlassen "$site"
    keys ctrl+l
    enter see.localhost/umgebung.html # only such a site, or an encrypted one, may ask
    find_window "$site"
    keys Tab Return
    find_window 'Tessera.*In der Umgebung.*'
    settle
    click $((left + 90)) $((top + 208))
    dialog_picture erlaubnis Erlaubnis "$border"
    keys Tab Return
    no_window Erlaubnis
    wait_for_light 1250 1000
    take mitteilung $((1280 - 345)) $((1024 - 110)) 345 110 -bordercolor black -trim +repage
    keys ctrl+l
    enter www.example.org/intern/plan.html
    moving=yes question anmeldung Anmeldung
    keys ctrl+l
    enter https://sicher.example.org/
    moving=yes question zertifikat 'Unsichere Verbindung'
    keys F5
    find_window 'Unsichere Verbindung'
    keys Tab Return
    no_window 'Unsichere Verbindung'
    find_window 'Tessera.*sicher.example.org.*'
    settle
    keys alt+Return
    find_window 'Sicherheit der Seite.*'
    picture sicherheit $((left + 60)) $((top + 57)) 364 274
    keys Escape
    end_program
}

# question NAME PATTERN: the picture of a question, which is then refused.
question() {
    dialog_picture "$1" "$2" "$border"
    keys Escape
    no_window "$2"
    find_window 'Tessera.*'
    place 20 30
    settle
}

downloads() {
    fresh_files
    start
    open www.example.org/faehre.html 'Fahrplan der Fähre'
    click $((left + 90)) $((top + 338))
    dialog_picture speichern-unter 'Datei speichern unter'
    keys Return
    find_window Downloads
    place 150 500
    find_window 'Tessera.*'
    place 20 30
    click $((left + 250)) $((top + 338))
    find_window 'Datei speichern unter'
    keys Return
    no_window 'Datei speichern unter'
    keys ctrl+j
    dialog_picture downloads Downloads
    keys Escape
    keys ctrl+shift+Delete
    dialog_picture browserdaten 'Browserdaten löschen' "$border"
    keys Escape
    end_program Return
}

windows() {
    fresh_files
    start
    place 20 30 760 520
    hand_over faehre.html
    hand_over garten.html
    keys alt+f n
    window_picture nebeneinander
    keys alt+f k
    window_picture kaskadiert
    place 20 30 1000 600
    click $((left + 700)) $((top + 60)) 3
    picture menue-flaeche $((left + 520)) $((top - title_bar)) 482 420
    keys Escape
    end_program
}

private() {
    fresh_files
    start
    place 20 30 760 520
    keys ctrl+shift+n
    enter www.example.org/garten.html
    keys alt+f
    window_picture privat
    keys Escape
    end_program
}

lists() {
    fresh_files
    start
    local page
    for page in 'faehre:Fahrplan der Fähre' 'garten:Gartenkalender' 'umgebung:In der Umgebung' \
        'gaestebuch:Gästebuch'; do
        open "www.example.org/${page%%:*}.html" "${page#*:}"
    done
    keys alt+x h
    find_window Historie
    place 60 80 860 220
    window_picture historie
    keys Escape
    end_program
}

archive() {
    fresh_files
    start
    keys ctrl+d
    dialog_picture seite-ins-archiv 'Bookmark - Hinzufügen'
    keys Escape
    no_window 'Bookmark - Hinzufügen'
    find_window 'Tessera.*'
    place 20 30
    open_archive 300 120 360 420
    window_picture archiv
    keys Down Down alt+m b
    picture archiv-menue $((left - border)) $((top - title_bar)) 560 330
    keys Escape Escape Escape Up Up
    keys Down alt+m o h
    settle
    window_picture ordner-benennen
    enter Werkzeug
    keys Up Up Up alt+m b e
    dialog_picture lesezeichen 'Bookmark - Eigenschaften'
    keys Escape
    keys alt+a e h
    dialog_picture exportieren 'Archiv exportieren in HTML Datei...'
    enter "$home/archiv.html"
    dialog_picture export-fertig Meldung
    keys Tab Return
    end_program Tab Return
}

bring_along() {
    fresh_files
    start
    place 20 30 760 520
    open www.example.org/lesezeichen.html Lesezeichen
    window_picture bookmarks-leiste
    keys shift+F6 Return
    dialog_picture bookmarks-uebernehmen 'Bookmarks übernehmen'
    keys Escape
    end_program
}

open_archive() {
    keys alt+x b
    find_window 'Bookmark Archiv'
    place "$@"
    keys Down asterisk Up asterisk
    settle
}

dialogs() {
    fresh_files
    start
    keys alt+d e
    dialog_picture einstellungen Einstellungen
    keys Escape
    no_window Einstellungen
    keys alt+f Right Return
    dialog_picture info 'Info über Tessera [0-9.]+' $border
    keys Escape
    end_program
}

# The README's picture.
overview() {
    fresh_files
    start
    hand_over faehre.html
    hand_over garten.html
    place 20 60
    open_archive 940 60 320 400
    convert -size 64x64 xc:'#8fa3b5' png:- | display -window root png:- || true # sets it, and fails
    picture uebersicht 8 28 1264 760
    end_program
}
