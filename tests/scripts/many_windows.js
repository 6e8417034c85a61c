// A long automation run: modal windows opened and closed one after another,
// none kept by the script, with enough allocation in between for the garbage
// collector to run on its own, and gc() besides. Each window gets one script
// object while it is open, and the run ends normally.
var engine = CreateObject("VendimarBI.EEngine");
var figura = CreateObject("VendimarBI.EFigura");
var Windows = 600;
for (var i = 0; i < Windows; ++i) {
    onNextWindow(function (w) {
        assert(w.objectName === "dlgFig");
        w.cancel();
    });
    assert(engine.Editar_Figura(figura) === false);
    var garbage = [];
    for (var k = 0; k < 2000; ++k)
        garbage.push({ window: i, item: k });
    if (i % 100 === 99)
        gc();
}
assert(windowsSeen().length === Windows, windowsSeen().length);
print("many windows ok");
