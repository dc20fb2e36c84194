#!/usr/bin/perl
# Checks how the sources hang together and names every file and line that breaks a
# rule: which room includes which, where the engine's headers are, that a room names no
# class of a room above it, that no file includes itself by way of others, and that
# none grows beyond 500 lines.
use strict;
use warnings;
use FindBin;

chdir "$FindBin::Bin/../.." or die "no project: $!\n";

# What a room may include besides itself. Single headers may be named, too.
my %allowed = (
    'launcher'         => ['base/SystemReason.h'],
    'base'             => [],
    'address'          => ['base'],
    'history'          => ['base'],
    'bookmarks'        => ['base', 'history/HistoryList.h'],
    'browser'          => ['base'],
    'pages/asking'     => ['base', 'address'],
    'pages/downloads'  => ['base', 'address'],
    'pages/viewing'    => ['base', 'address'],
    'engine/page'      => ['base', 'address', 'browser', 'pages/asking', 'pages/downloads', 'pages/viewing'],
    'engine/asking'    => ['base', 'address', 'browser', 'pages/asking', 'pages/downloads', 'pages/viewing', 'engine/page'],
    'engine/downloads' => ['base', 'address', 'browser', 'pages/asking', 'pages/downloads', 'pages/viewing', 'engine/page', 'engine/asking'],
    'engine/viewing'   => ['base', 'address', 'browser', 'pages/asking', 'pages/downloads', 'pages/viewing', 'engine/page', 'engine/asking', 'engine/downloads'],
);
$allowed{engine} = [grep { !m{^(launcher|history|bookmarks)$} } keys %allowed];
$allowed{app} = [keys %allowed];
my $longest = 500;

my (%includes, %home, @faults);

sub room_of { my ($file) = @_; return $file =~ m{(.*)/} ? $1 : '' }

sub fault { push @faults, join ' ', @_ }

sub is_allowed {
    my ($room, $header) = @_;
    my $other = room_of($header);
    return $other eq $room || grep { $_ eq $other || $_ eq $header } @{ $allowed{$room} };
}

my @files = sort split /\0/, `git ls-files -z --cached --others --exclude-standard '*.cpp' '*.h'`;
@files = grep { exists $allowed{ room_of($_) } && -e } @files;
/([^\/]+)\.h$/ and $home{$1} = $_ for @files;

for my $file (@files) {
    my $room = room_of($file);
    open my $text, '<', $file or die "$file: $!\n";
    while (<$text>) {
        if (/^#include "(.+)"/) {
            push @{ $includes{$file} }, $1;
            fault("$file:$.: a source of $room may not include $1") unless is_allowed($room, $1);
        }
        fault("$file:$.: the engine's header $1 is for engine/ only")
            if /^#include <(Q(?:t)?WebEngine[^>]*)>/ && $room !~ /^engine/;
        fault("$file:$.: $room names the class $1 of $home{$1}")
            if /^(?:class|struct) (\w+);/ && $home{$1} && !is_allowed($room, $home{$1});
    }
    fault("$file: $. lines, more than $longest") if $. > $longest;
}

# Follows the includes of a file in depth; a file met again on the way closes a circle.
my (%done, @way);

sub follow {
    my ($file) = @_;
    return if $done{$file};
    if (grep { $_ eq $file } @way) {
        fault('circle: ' . join ' -> ', @way, $file);
        return;
    }
    push @way, $file;
    follow($_) for @{ $includes{$file} || [] };
    pop @way;
    $done{$file} = 1;
}
follow($_) for @files;

# tessera_engine is what the room engine/ adds to it, and nothing else.
for my $list (split /\0/, `git ls-files -z '*CMakeLists.txt'`) {
    next if $list =~ m{^engine/};
    open my $text, '<', $list or next;
    while (<$text>) {
        fault("$list:$.: only engine/ adds sources to tessera_engine")
            if /target_sources\(tessera_engine\b/;
    }
}

print "$_\n" for @faults;
printf "%d files in %d rooms, %d faults\n", scalar @files, scalar keys %allowed, scalar @faults;
exit(@faults ? 1 : 0);
