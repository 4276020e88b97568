# Runs the program and prints each variable of whoever calls `look`; lines begin with "> ".

import gdb


def variables(frame):
    for symbol in frame.block():
        if symbol.is_variable:
            yield symbol


def show(frame):
    print("> [" + frame.name().replace("_", "-") + "]")
    for symbol in sorted(variables(frame), key=lambda symbol: symbol.line):
        if symbol.name in ("in", "parser", "decoy", "place", "document"):
            continue
        value = symbol.value(frame)
        if value.type.code == gdb.TYPE_CODE_REF:
            value = value.referenced_value()
        print(f"> {symbol.name} = {value.format_string()}")


class Stop(gdb.Breakpoint):
    def stop(self):
        return True


gdb.execute("set breakpoint pending on")
Stop("look")
gdb.execute("run", to_string=True)
while gdb.selected_inferior().pid:
    show(gdb.selected_frame().older())
    gdb.execute("continue", to_string=True)
