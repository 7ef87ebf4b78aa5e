"""Drives the real console against the real practice service, from the outside."""
