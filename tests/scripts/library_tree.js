// The metric library's tree as the dialog sees it. A freshly opened library
// has no node selected, whatever node the tree has made current: what the
// script reads as selected is what the dialog's buttons act on. A double
// click on a metric whose editor is accepted reloads the tree, and the double
// click ends there, with one editor opened and no second click on a node
// that is gone.
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

var metrica = engine.CrearEntidad(VendimarBI.cMetrica);
metrica.Nombre = "Total";
metrica.Titulo = "Total vendido";
metrica.Descripcion = "Importe";
metrica.CodigoFuente = "return 1;";
metrica.FK_Perspectiva = perspectiva.Sys_PK;
assert(engine.GuardarEntidad(metrica));

onNextWindow(function (w) {
    w.doubleClick("tvw", "Total");
    var texts = w.nodes("tvw").map(function (n) { return n.text; }).join(",");
    assert(texts === "Ventas,Total neto", "the tree was reloaded: " + texts);
    w.click("cCerrar");
});
onNextWindow(function (w) {
    assert(w.objectName === "dlgDato" && w.getText("cNombre") === "Total", w.objectName);
    w.setText("cNombre", "Total neto");
    w.click("cAceptar");
});
engine.Biblioteca_Metricas();
var seen = windowsSeen().map(function (s) { return s.objectName; }).join(",");
assert(seen === "dlgBibdatos,MsgBox,dlgBibdatos,dlgDato", "one editor: " + seen);
assert(engine.CargarEntidad(VendimarBI.cMetrica, metrica.Sys_PK).Nombre === "Total neto");
print("library tree ok");
