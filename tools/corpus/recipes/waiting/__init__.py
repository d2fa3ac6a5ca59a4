"""Documents of kinds of model that no plug-in reads yet."""
