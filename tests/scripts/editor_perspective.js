// The perspective editor through its two entry points, accepted and
// cancelled, with the validation message answered on the way.
var cnx = CreateObject("ADODB.Connection");
cnx.Open(DatabaseUrl);
var engine = CreateObject("VendimarBI.EEngine");
var um = CreateObject("Host.UserManagement");
engine.SetConnection(cnx, 1);
engine.SetUM(um);

onNextWindow(function (w) {
    assert(w.objectName === "dlgPropPers" && w.title === "Propiedades de perspectiva");
    assert(w.property("Engine") === engine, "the dialog was handed this engine");
    w.setText("cNombre", "   ");
    w.click("cAceptar");
    assert(w.isOpen && w.focus === "cNombre", "a blank name keeps the dialog open, focus on the name");
    w.setText("cNombre", "Ventas");
    w.setText("cEntidad", "Cliente");
    w.click("Aceptar");
});
onNextWindow(function (m) {
    assert(m.kind === "message" && m.message === "Indique el nombre de la perspectiva", m.message);
    m.answer("Aceptar");
});
var key = engine.Form_Agregar_Perspectiva(0);
assert(key > 0, "accepted: the new key");
var p = engine.CargarEntidad(VendimarBI.cPerspectiva, key);
assert(p.Nombre === "Ventas" && p.EntidadAsociada === "Cliente" && p.FK_Padre === 0);

onNextWindow(function (w) {
    assert(w.getText("cNombre") === "Ventas", "editing shows the stored name");
    w.setText("cNombre", "Nunca");
    w.click("cCancelar");
});
assert(engine.Form_Editar_Perspectiva(key) === false, "cancelled edit answers false");
assert(engine.CargarEntidad(VendimarBI.cPerspectiva, key).Nombre === "Ventas", "and stores nothing");

onNextWindow(function (w) {
    w.setText("cNombre", "Ventas netas");
    w.click("cAceptar");
});
assert(engine.Form_Editar_Perspectiva(key) === true);
assert(engine.CargarEntidad(VendimarBI.cPerspectiva, key).Nombre === "Ventas netas");

onNextWindow(function (w) { w.pressKey("Escape"); });
assert(engine.Form_Agregar_Perspectiva(key) === 0, "Escape cancels");
assert(um.asked.join(",") === "KZ4-TBL-05-001,KZ4-TBL-05-002,KZ4-TBL-05-002,KZ4-TBL-05-001", um.asked.join(","));
print("perspective editor ok");
