"""Drives the real program in a real window. docs/testing.md tells how tests are written with it."""
