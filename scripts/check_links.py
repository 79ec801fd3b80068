#!/usr/bin/env python3
"""Checks the relative links of Markdown documents: files exist, and so do the headings named."""
import re
import sys
import urllib.parse
from pathlib import Path

FENCE = re.compile(r'^(```|~~~).*?^\1', re.MULTILINE | re.DOTALL)
LINK = re.compile(r'!?\[[^\]]*\]\(\s*<?([^)\s>]+)>?(?:\s+"[^"]*")?\s*\)|^\[[^\]]+\]:\s*(\S+)', re.MULTILINE)
HEADING = re.compile(r'^#{1,6}\s+(.*?)\s*#*\s*$', re.MULTILINE)


def text_of(path):
    """The document without its blocks of code; lines of code by indentation hold no links here."""
    return FENCE.sub('', path.read_text(encoding='utf-8'))


def anchors_of(path):
    """The anchors that renderers make of headings: small letters, blanks to "-", no punctuation."""
    anchors, seen = set(), {}
    for heading in HEADING.findall(text_of(path)):
        plain = re.sub(r'\[([^\]]*)\]\([^)]*\)', r'\1', heading)
        slug = re.sub(r'[^\w\- ]', '', plain.lower()).replace(' ', '-')
        count = seen.get(slug, 0)
        seen[slug] = count + 1
        anchors.add(slug if count == 0 else f'{slug}-{count}')
    return anchors


def faults(document):
    prose = re.sub(r'`[^`\n]*`', '``', text_of(document))
    for match in LINK.finditer(prose):
        link = match.group(1) or match.group(2)
        parts = urllib.parse.urlsplit(link)
        if parts.scheme or parts.netloc:
            continue
        target = document
        if parts.path:
            target = document.parent / urllib.parse.unquote(parts.path)
            if not target.exists():
                yield f'{document}: {link}: no such file'
                continue
        if parts.fragment and target.suffix == '.md' and parts.fragment not in anchors_of(target):
            yield f'{document}: {link}: no such heading'


found = [fault for name in sys.argv[1:] for fault in faults(Path(name))]
print(*found, sep='\n', end='\n' if found else '')
sys.exit(1 if found else 0)
