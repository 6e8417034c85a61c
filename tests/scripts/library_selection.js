// A freshly opened library has no node selected, whatever node the tree has
// made current: what the script reads as selected is what the dialog's
// buttons act on.
var cnx = CreateObject("ADODB.Connection");
cnx.Open(DatabaseUrl);
var engine = CreateObject("VendimarBI.EEngine");
var um = CreateObject("Host.UserManagement");
engine.SetConnection(cnx, 1);
engine.SetUM(um);
var perspectiva = engine.CrearEntidad(VendimarBI.cPerspectiva);
perspectiva.Nombre = "Ventas";
assert(engine.GuardarEntidad(perspectiva));

onNextWindow(function (w) {
    assert(w.objectName === "dlgBibdatos");
    assert(w.selection("tvw") === null, JSON.stringify(w.selection("tvw")));
    assert(w.nodes("tvw").every(function (n) { return !n.selected; }), JSON.stringify(w.nodes("tvw")));
    assert(w.getText("tvw") === "", w.getText("tvw"));
    w.click("Eliminar");                      // nothing selected: the dialog says so
    w.select("tvw", "Ventas");
    var selected = w.selection("tvw");
    assert(selected !== null && selected.text === "Ventas" && selected.index === 0, JSON.stringify(selected));
    assert(w.nodes("tvw")[0].selected === true, JSON.stringify(w.nodes("tvw")));
    assert(w.getText("tvw") === "Ventas", w.getText("tvw"));
    w.click("cCerrar");
});
onNextWindow(function (m) {
    assert(m.message === "Seleccione un elemento", m.message);
    m.answer("Aceptar");
});
engine.Biblioteca_Metricas();
assert(windowsSeen().length === 2, JSON.stringify(windowsSeen()));
print("library selection ok");
