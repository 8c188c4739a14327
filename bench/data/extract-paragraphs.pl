#!/usr/bin/perl
# Turns DocBook-made HTML pages into plain paragraphs, one a line, so that every benchmark and
# peer reads the same prose without markup. Paragraphs with few Han characters (code, tables,
# command lines) are dropped: they would measure the Latin path, not the dictionary.
use strict;
use warnings;
use utf8;
use open qw(:std :encoding(UTF-8));

my $minHan = 10;
local $/;
for my $file (@ARGV) {
  open(my $in, '<:encoding(UTF-8)', $file) or die "$file: $!\n";
  my $html = <$in>;
  close($in);
  # Literal blocks hold commands and file listings, not prose.
  $html =~ s{<pre\b.*?</pre>}{ }gis;
  while ($html =~ m{<p\b[^>]*>(.*?)</p>}gis) {
    my $p = $1;
    $p =~ s{<[^>]*>}{}gs;
    $p =~ s{&lt;}{<}g;
    $p =~ s{&gt;}{>}g;
    $p =~ s{&quot;}{"}g;
    $p =~ s{&nbsp;|&#160;}{ }g;
    $p =~ s{&#x([0-9a-fA-F]+);}{chr(hex($1))}ge;
    $p =~ s{&#([0-9]+);}{chr($1)}ge;
    $p =~ s{&amp;}{&}g;
    # The pages wrap lines only where the translation already had a space.
    $p =~ s{\s+}{ }g;
    $p =~ s{^ | $}{}g;
    my $han = () = $p =~ /\p{Han}/g;
    print "$p\n" if $han >= $minHan;
  }
}
