"""Throw-away desktops, the program on them and ways to drive it: what the tests share."""
