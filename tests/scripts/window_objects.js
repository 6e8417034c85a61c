// Window objects: the same object each time a window comes back to a
// handler, error 91 from one kept after its window is gone, error 13 for a
// window operation called on anything else, and a window is never taken
// for a component object.
var engine = CreateObject("VendimarBI.EEngine");
var figura = CreateObject("VendimarBI.EFigura");
var first = null;
onNextWindow(function (w) { first = w; });          // left open: it comes back
onNextWindow(function (w) {
    assert(w === first, "one script object per window");
    assert(Object.getOwnPropertyNames(w).length === 0 && JSON.stringify(Object.keys(w)) === "[]",
           "a window object has no properties of its own to change");
    w.cancel();
});
assert(engine.Editar_Figura(figura) === false);

function errorOf(action) {
    try {
        action();
    } catch (e) {
        return e.number;
    }
    return 0;
}
assert(errorOf(function () { return first.title; }) === 91, "the window is gone");
assert(errorOf(function () { Object.getPrototypeOf(first).click.call({}, "cmdAceptar"); }) === 13, "not a window");
assert(errorOf(function () { Object.getPrototypeOf(first).click.call(figura, "cmdAceptar"); }) === 13, "an object is no window");
assert(errorOf(function () { engine.Editar_Figura(first); }) !== 0, "a window is no component object");
print("window objects ok");
