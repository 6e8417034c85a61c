// The metric library: its tree, adding a perspective and a metric through the
// nested editors, editing by double click, and a refused delete of a node
// with children; the library is closed with its own button.
var cnx = CreateObject("ADODB.Connection");
cnx.Open(DatabaseUrl);
var engine = CreateObject("VendimarBI.EEngine");
var um = CreateObject("Host.UserManagement");
engine.SetConnection(cnx, 1);
engine.SetUM(um);

onNextWindow(function (w) {
    assert(w.objectName === "dlgBibdatos" && w.title === "Biblioteca de métricas");
    assert(w.nodes("tvw").length === 0, "an empty library");
    w.click("Agregar perspectiva");
    var nodes = w.nodes("tvw");
    assert(nodes.length === 1 && nodes[0].text === "Ventas" && nodes[0].tag === "P", JSON.stringify(nodes));
    w.select("tvw", nodes[0].key);
    w.click("Agregar métrica");
    nodes = w.nodes("tvw");
    assert(nodes.length === 2, JSON.stringify(nodes));
    var metrica = nodes[1];
    assert(metrica.text === "Total" && metrica.tag === "M" && metrica.parentKey === nodes[0].key, JSON.stringify(metrica));
    assert(metrica.key.indexOf("MT_") === 0);
    w.doubleClick("tvw", "Total");            // edits: answered below, cancelled
    w.select("tvw", "Ventas");
    assert(w.selection("tvw").key === nodes[0].key);
    w.click("Eliminar");                      // asks, then refuses: it has a child
    w.click("cCerrar");
});
onNextWindow(function (w) {
    assert(w.objectName === "dlgPropPers");
    w.setText("cNombre", "Ventas");
    w.click("cAceptar");
});
onNextWindow(function (w) {
    assert(w.objectName === "dlgDato");
    w.setText("cNombre", "Total");
    w.setText("cTitulo", "Total vendido");
    w.setText("cDescrip", "Importe");
    w.click("cAceptar");
});
onNextWindow(function (w) {
    assert(w.objectName === "dlgDato" && w.getText("cNombre") === "Total", "the double click opened the metric");
    w.cancel();
});
onNextWindow(function (m) {
    assert(m.message === "¿Seguro desea eliminar este elemento?" && m.icon === "none", m.message + " " + m.icon);
    assert(m.buttons.join(",") === "Sí,No", m.buttons.join(","));
    m.answer("Sí");
});
onNextWindow(function (m) {
    assert(m.message === "No se puede eliminar el elemento porque tiene nodos hijo.", m.message);
    m.answer("Aceptar");
});
engine.Biblioteca_Metricas();
assert(um.asked.join(",") === "KZ4-TBL-05-000,KZ4-TBL-05-001,KZ4-TBL-05-004,KZ4-TBL-05-005", um.asked.join(","));

// Deleting the metric from a new library window.
onNextWindow(function (w) {
    w.select("tvw", "Total");
    w.click("Eliminar");
    assert(w.nodes("tvw").length === 1, "the metric's node is gone");
    w.click("cCerrar");
});
onNextWindow(function (m) { m.answer("Sí"); });
engine.Biblioteca_Metricas();
assert(engine.getScalar("SELECT COUNT(*) FROM ut_bi_Metrica", cnx) == 0);
print("metric library ok");
