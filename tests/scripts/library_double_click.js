// A double click on a metric whose editor is accepted: the library reloads
// its tree, and the double click ends there, with one editor opened and no
// second click on a node that is gone.
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
assert(seen === "dlgBibdatos,dlgDato", "one editor: " + seen);
assert(engine.CargarEntidad(VendimarBI.cMetrica, metrica.Sys_PK).Nombre === "Total neto");
print("library double click ok");
