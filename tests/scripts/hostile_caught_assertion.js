// Catching a failed assertion does not make the run succeed.
try {
    assert(false, "checked and caught");
} catch (e) {
    print("caught:", e.message);
}
print("went on");
