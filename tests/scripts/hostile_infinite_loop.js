// Never ends on its own: the time limit given on the command line stops it.
var n = 0;
for (;;)
    n++;
