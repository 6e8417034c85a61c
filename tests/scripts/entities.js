// Every entity kind goes through the engine's factory: created, saved,
// loaded back by its key and deleted with its right; the three indicator
// configurations are created by name and travel with their indicator.
var cnx = CreateObject("ADODB.Connection");
cnx.Open(DatabaseUrl);
var engine = CreateObject("VendimarBI.EEngine");
var um = CreateObject("Host.UserManagement");
engine.SetConnection(cnx, 7);
engine.SetUM(um);

function roundTrip(kind, fill, check) {
    var entity = engine.CrearEntidad(kind);
    assert(entity !== null, "CrearEntidad(" + kind + ") made an object");
    fill(entity);
    assert(engine.GuardarEntidad(entity) === true, "kind " + kind + " saved");
    var key = entity.Sys_PK;
    assert(key > 0, "kind " + kind + " got a key");
    var loaded = engine.CargarEntidad(kind, key);
    assert(loaded !== null && loaded !== entity, "kind " + kind + " loads as a new object");
    assert(loaded.Sys_PK === key, "kind " + kind + " loads its own row");
    check(loaded);
    assert(engine.EliminarEntidad(kind, key) === true, "kind " + kind + " deleted");
    assert(engine.CargarEntidad(kind, key) === null, "kind " + kind + " is gone");
    return key;
}

var perspectiva = engine.CrearEntidad(VendimarBI.cPerspectiva);
perspectiva.Nombre = "Ventas";
perspectiva.EntidadAsociada = "Cliente";
assert(engine.GuardarEntidad(perspectiva));

roundTrip(VendimarBI.cPerspectiva, function (p) {
    p.Nombre = "Compras";
    p.EntidadAsociada = "@";
    p.FK_Padre = perspectiva.Sys_PK;
    p.Grupos = "*";
}, function (p) {
    assert(p.Nombre === "Compras" && p.EntidadAsociada === "@" && p.Grupos === "*");
    assert(p.FK_Padre === perspectiva.Sys_PK);
});

var metrica = engine.CrearEntidad(VendimarBI.cMetrica);
metrica.Nombre = "Total vendido";
metrica.FK_Perspectiva = perspectiva.Sys_PK;
assert(engine.GuardarEntidad(metrica));

roundTrip(VendimarBI.cMetrica, function (m) {
    m.Nombre = "Unidades";
    m.Titulo = "Unidades vendidas";
    m.Descripcion = "Piezas por día";
    m.Decimales = 2;
    m.Formato = "#,##0.00";
    m.CodigoFuente = "// total\nreturn 1;";
    m.FK_Perspectiva = perspectiva.Sys_PK;
}, function (m) {
    assert(m.Nombre === "Unidades" && m.Titulo === "Unidades vendidas" && m.Descripcion === "Piezas por día");
    assert(m.Decimales === 2 && m.Formato === "#,##0.00");
    assert(m.CodigoFuente === "// total\nreturn 1;", "source text kept: " + m.CodigoFuente);
    assert(m.Sys_GUID.length === 38, "the row component gave a GUID: " + m.Sys_GUID);
});

// An indicator of each kind, its configuration created by programmatic name.
var configuraciones = [
    [VendimarBI.cBarraProgreso, "VendimarBI.EBarraProgreso", function (c) { c.FK_Metrica = metrica.Sys_PK; c.Mes_Max = 250.5; c.Mes_Color = 0x00FF0000; },
     function (c) { return c.FK_Metrica === metrica.Sys_PK && c.Mes_Max === 250.5 && c.Mes_Color === 0x00FF0000; }],
    [VendimarBI.cSemaforo, "VendimarBI.ESemaforo", function (c) { c.FK_Metrica = metrica.Sys_PK; c.Descendente = true; c.Ano_Limite2 = 75; },
     function (c) { return c.FK_Metrica === metrica.Sys_PK && c.Descendente === true && c.Ano_Limite2 === 75; }],
    [VendimarBI.cMatrizGrafico, "VendimarBI.EMatrizGrafico", function (c) { c.Matriz_Metrica1 = metrica.Sys_PK; c.Grafico_Metrica5 = metrica.Sys_PK; c.Grafico_Titulo = "Mes"; c.Grafico_Tipo = VendimarBI.cBarras2D; },
     function (c) { return c.Matriz_Metrica1 === metrica.Sys_PK && c.Grafico_Metrica5 === metrica.Sys_PK && c.Grafico_Titulo === "Mes" && c.Grafico_Tipo === 3; }],
];
configuraciones.forEach(function (entry) {
    roundTrip(VendimarBI.cIndicador, function (i) {
        i.Nombre = "Indicador " + entry[1];
        i.FK_Perspectiva = perspectiva.Sys_PK;
        i.Tipo = entry[0];
        var configuracion = CreateObject(entry[1]);
        entry[2](configuracion);
        i.Configuracion = configuracion;
        assert(i.Configuracion === configuracion, "the indicator holds the very object given");
    }, function (i) {
        assert(i.Tipo === entry[0], "kind kept");
        assert(String(i.Configuracion) === "[object " + entry[1].substring(11) + "]", "configuration " + i.Configuracion);
        assert(entry[3](i.Configuracion), "configuration of " + entry[1] + " kept: " + JSON.stringify(i.Configuracion));
    });
});

var tableroKey = roundTrip(VendimarBI.cTablero, function (t) {
    t.Nombre = "Mi tablero";
    t.FK_Usuario = engine.PKUser;
}, function (t) {
    assert(t.Nombre === "Mi tablero" && t.FK_Usuario === 7);
    assert(t.Figuras.Count === 0 && t.Indicadores.Count === 0, "a fresh dashboard holds nothing");
});

var tablero = engine.CrearEntidad(VendimarBI.cTablero);
tablero.Nombre = "Con objetos";
tablero.FK_Usuario = 7;
assert(engine.GuardarEntidad(tablero));

roundTrip(VendimarBI.ctabindicador, function (t) {
    t.FK_Tablero = tablero.Sys_PK;
    t.FK_Indicador = 42;
    t.x = 100; t.Y = 200; t.W = 3000; t.H = 1500;
    t.Muestra_Mes = true;
    t.PeriodoInicio = VendimarBI.cMes;
    t.Limite8 = 12.25;
}, function (t) {
    assert(t.FK_Tablero === tablero.Sys_PK && t.FK_Indicador === 42);
    assert(t.x === 100 && t.Y === 200 && t.W === 3000 && t.H === 1500);
    assert(t.Muestra_Mes === true && t.Muestra_Dia === false && t.PeriodoInicio === 2 && t.Limite8 === 12.25);
});

roundTrip(VendimarBI.cFigura, function (f) {
    f.FK_Tablero = tablero.Sys_PK;
    f.Texto = "Ventas del mes";
    f.Fuente = "DejaVu Sans";
    f.Tam_fuente = 14;
    f.Negrita = true;
    f.Color = 0x000000FF;
    f.ColorFondo = 0x00FFFFFF;
    f.Alineacion = VendimarBI.cCentro;
}, function (f) {
    assert(f.Texto === "Ventas del mes" && f.Fuente === "DejaVu Sans" && f.Tam_fuente === 14);
    assert(f.Negrita === true && f.Cursiva === false && f.Color === 255 && f.Alineacion === 2);
});

// A dashboard loads its figures and placed indicators as collections.
var figura = engine.CrearEntidad(VendimarBI.cFigura);
figura.FK_Tablero = tablero.Sys_PK;
figura.Texto = "Etiqueta";
assert(engine.GuardarEntidad(figura));
var cargado = engine.CargarEntidad(VendimarBI.cTablero, tablero.Sys_PK);
assert(cargado.Figuras.Count === 1, "one figure: " + cargado.Figuras.Count);
assert(cargado.Figuras.Item(1).Texto === "Etiqueta");
assert(cargado.Figuras.Item(1) === cargado.Figuras.Item(1), "the same member is the same object");

// Deleting the dashboard takes its figures with it.
assert(engine.EliminarEntidad(VendimarBI.cTablero, tablero.Sys_PK));
assert(engine.CargarEntidad(VendimarBI.cFigura, figura.Sys_PK) === null);
// One right per delete, each kind its own.
assert(um.asked.join(" ") === "KZ4-TBL-05-003 KZ4-TBL-05-006 KZ4-TBL-06-003 KZ4-TBL-06-003 KZ4-TBL-06-003 "
       + "KZ4-TBL-04-000 KZ4-TBL-03-000 KZ4-TBL-03-000 KZ4-TBL-04-000", "rights asked: " + um.asked.join(" "));
print("entities ok");
