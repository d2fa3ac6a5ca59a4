"""The documents of the corpus, a module a family of models."""
