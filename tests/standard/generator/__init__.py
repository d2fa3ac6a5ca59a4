"""Random documents and cases of PMML 4.4, by classes that can be named.

A class makes documents in which one thing is at work above a ground that every reader shares, so that a difference tells
what it is about. The catalogue is in catalogue.py.
"""
