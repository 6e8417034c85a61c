var total = 1 + 1;
assert(total === 3, "one and one make three");
print("not reached");
