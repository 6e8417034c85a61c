// The script sets its own, short, time limit and then never ends.
setTimeLimit(0.5);
while (true) {
}
