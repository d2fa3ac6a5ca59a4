"""An evaluator of PMML 4.4, written from the published standard alone.

It shares no code, no table and no test with the library: what both of them say is so for two reasons. It is written for
exactness and plainness, reads a document with xml.etree and evaluates it case by case. Where the standard is silent, the
docstring of the module at hand states the decision in a line that begins with "Decision:".
"""
