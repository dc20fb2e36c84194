#!/usr/bin/perl
# Writes the program's files for the manual's pictures into the folder given:
# preferences, and an archive with a few folders.
use strict;
use warnings;
use utf8;
use Encode 'encode';

my $folder = shift or die "usage: records.pl FOLDER\n";

sub text { my ($text, $width) = @_; return pack "A$width", encode('cp1252', $text) }

sub keep {
    my ($name, $bytes) = @_;
    open my $file, '>:raw', "$folder/$name" or die "$folder/$name: $!\n";
    print $file $bytes;
    close $file or die "$folder/$name: $!\n";
}

my ($width, $height) = (900, 700);
keep('Pref.tsp', pack('s<7', -1, -1, 50, 15 * $width, 15 * $height, 0, 1)
      . text('http://www.example.org/', 200)
      . text('https://suche.example.org/', 200)
      . text('', 200)
      . pack('s<2', -1, -1));

my @folders = (
    ['Reisen', ['Wanderwege am See', '', 'Drei Wege, Karte und Hinweise'],
     ['Fahrplan der Fähre', 'faehre.html', 'Gilt von April bis Oktober'],
     ['In der Umgebung', 'umgebung.html', '']],
    ['Haus und Garten', ['Gartenkalender', 'garten.html', 'Aussaat und Ernte'],
     ['Wetter am See', 'wetter.html', '']],
    ['Küche', ['Rezepte für Fisch', 'fisch.html', ''], ['Brot backen', 'brot.html', '']],
    ['Verein', ['Gästebuch', 'gaestebuch.html', ''],
     ['Vereinsseiten', 'intern/plan.html', 'Mit Anmeldung']],
);
my ($index, $number) = ('', 0);
for (@folders) {
    my ($name, @bookmarks) = @$_;
    ++$number;
    $index .= pack('l<2', $number, $number) . text($name, 200) . text("$number.bkm", 128);
    my ($records, $position) = ('', 0);
    for (@bookmarks) {
        my ($title, $page, $info) = @$_;
        $records .= pack('s<', ++$position)
          . text($title, 200)
          . text("http://www.example.org/$page", 200)
          . text($info, 320);
    }
    keep("$number.bkm", $records);
}
keep('Book.bkm', $index);
