// The indicator library: an indicator added under a perspective through the
// indicator editor, the refusals for perspectives, and a delete.
var cnx = CreateObject("ADODB.Connection");
cnx.Open(DatabaseUrl);
var engine = CreateObject("VendimarBI.EEngine");
var um = CreateObject("Host.UserManagement");
engine.SetConnection(cnx, 1);
engine.SetUM(um);
var perspectiva = engine.CrearEntidad(VendimarBI.cPerspectiva);
perspectiva.Nombre = "Ventas";
assert(engine.GuardarEntidad(perspectiva));
var metrica = engine.CrearEntidad(VendimarBI.cMetrica);
metrica.Nombre = "Importe";
metrica.FK_Perspectiva = perspectiva.Sys_PK;
assert(engine.GuardarEntidad(metrica));

onNextWindow(function (w) {
    assert(w.objectName === "dlgBibIndi" && w.title === "Biblioteca de indicadores");
    w.select("tvw", "KP_" + perspectiva.Sys_PK);
    w.click("Editar");                        // a perspective: refused with a message
    w.click("Agregar");
    var nodes = w.nodes("tvw");
    assert(nodes.length === 2 && nodes[1].tag === "I" && nodes[1].text === "Barra", JSON.stringify(nodes));
    w.select("tvw", "Barra");
    w.click("Eliminar");
    assert(w.nodes("tvw").length === 1, "deleted");
    w.click("Cerrar");
});
onNextWindow(function (m) {
    assert(m.message === "No se puede editar una perspectiva, seleccione un indicador", m.message);
    m.answer("Aceptar");
});
onNextWindow(function (w) {
    assert(w.objectName === "dlgPropIndicador");
    w.setText("cNombre", "Barra");
    w.select("cMetrica", "Importe");
    w.click("cAceptar");
});
onNextWindow(function (m) { m.answer("Sí"); });
engine.Biblioteca_Indicadores();
assert(um.asked.join(",") === "KZ4-TBL-06-000,KZ4-TBL-06-001,KZ4-TBL-06-003", um.asked.join(","));
assert(engine.getScalar("SELECT COUNT(*) FROM ut_bi_Indicador", cnx) == 0);
print("indicator library ok");
