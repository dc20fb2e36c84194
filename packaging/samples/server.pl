#!/usr/bin/perl
# The web server behind the manual's pictures: hands out the files of the folder
# given, on the loopback interface only, and prints its port. What lies in a
# folder "intern" wants a log-in; of "karten.zip" a part comes, and no end.
use strict;
use warnings;
use IO::Socket::INET;

my $folder = shift or die "usage: server.pl FOLDER\n";
my %types = (html => 'text/html', css => 'text/css', svg => 'image/svg+xml', csv => 'text/csv');
my $server = IO::Socket::INET->new(LocalAddr => '127.0.0.1', Listen => 20, ReuseAddr => 1)
  or die "no port: $!\n";
$SIG{CHLD} = 'IGNORE';
$SIG{PIPE} = sub { exit };
$| = 1;
print $server->sockport, "\n";

sub answer {
    my ($socket, $status, $headers, $body) = @_;
    print $socket "HTTP/1.1 $status\r\n$headers",
      'Content-Length: ', length $body, "\r\nConnection: close\r\n\r\n", $body;
}

# As a slow line would bring it.
sub trickle {
    my ($socket) = @_;
    $socket->autoflush(1);
    print $socket "HTTP/1.1 200 OK\r\nContent-Type: application/zip\r\n",
      "Content-Length: 48000000\r\nConnection: close\r\n\r\n";
    for (1 .. 31) {
        print $socket "\0" x 1_000_000;
        select undef, undef, undef, 0.02;
    }
    <$socket>; # until the other side ends it
}

sub serve {
    my ($socket) = @_;
    my $request = <$socket> // return;
    my $user;
    while (defined(my $line = <$socket>)) {
        last if $line =~ /^\r?\n$/;
        $user = 1 if $line =~ /^Authorization:/i;
    }
    my ($path) = $request =~ m{^GET /([\w./-]*)};
    $path = 'index.html' if !defined $path || $path eq '';
    return trickle($socket) if $path eq 'karten.zip';
    return answer($socket, '401 Unauthorized',
        "WWW-Authenticate: Basic realm=\"Vereinsseiten\"\r\n", '')
      if $path =~ m{^intern/} && !$user;
    my ($type) = map { $types{$_} // 'application/octet-stream' } $path =~ /\.(\w+)$/;
    if ($path !~ /\.\./ && open my $file, '<:raw', "$folder/$path") {
        local $/;
        answer($socket, '200 OK', "Content-Type: $type\r\n", scalar <$file>);
    } else {
        answer($socket, '404 Not Found', "Content-Type: text/html\r\n", '<title>404</title>');
    }
}

while (my $socket = $server->accept) {
    my $child = fork;
    if (defined $child && $child == 0) {
        close $server;
        serve($socket);
        exit;
    }
    close $socket;
}
