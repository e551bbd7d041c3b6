"""A private X desktop, the bar on it, and the eyes and hands that test it."""
