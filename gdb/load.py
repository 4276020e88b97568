# For gdb, by hand: source gdb/load.py

import os
import sys

# Not __file__, which within another script that gdb runs is that of the other one.
sys.path.insert(0, os.path.dirname(os.path.abspath(sys._getframe().f_code.co_filename)))

import tqxml_gdb  # noqa: E402

tqxml_gdb.register()
