// Arguments and property values convert as automation converts them: numbers
// round half to even into 16- and 32-bit integers (error 6 when they do not
// fit), text and booleans convert both ways, null is VB Null, undefined is
// Empty, and objects keep their identity on the way out and back in.
var cnx = CreateObject("ADODB.Connection");
cnx.Open(DatabaseUrl);
var engine = CreateObject("VendimarBI.EEngine");
var um = CreateObject("Host.UserManagement");
engine.SetConnection(cnx, 1);
engine.SetUM(um);

function errorOf(action) {
    try {
        action();
    } catch (e) {
        return e.number;
    }
    return 0;
}

// Rounding half to even, as CLng does.
assert(String(engine.CrearEntidad(2.5)) === "[object EMetrica]", "2.5 rounds to 2");
assert(String(engine.CrearEntidad(3.5)) === "[object ETablero]", "3.5 rounds to 4");
assert(String(engine.CrearEntidad("3")) === "[object EIndicador]", "text that is a number converts");
assert(engine.CrearEntidad(true) === null, "true is -1, no kind");
assert(errorOf(function () { engine.CrearEntidad(2147483648); }) === 6, "past 32 bits is an overflow");
assert(errorOf(function () { engine.CrearEntidad("dos"); }) === 13, "text that is no number");
assert(errorOf(function () { engine.CrearEntidad(null); }) === 94, "Null into an integer");
assert(engine.CrearEntidad(undefined) === null, "Empty is 0");

// 16-bit properties.
engine.chartType = 32767;
assert(engine.chartType === 32767);
assert(errorOf(function () { engine.chartType = 32768; }) === 6, "past 16 bits is an overflow");
assert(engine.chartType === 32767, "a failed assignment changes nothing");
engine.chartType = -1.5;
assert(engine.chartType === -2, "-1.5 rounds to -2");
engine.chartType = "12";
assert(engine.chartType === 12);

// 32-bit properties.
engine.PKUser = 2147483647;
assert(engine.PKUser === 2147483647);
assert(errorOf(function () { engine.PKUser = 2147483647.5; }) === 6);
engine.PKUser = undefined;
assert(engine.PKUser === 0, "Empty assigns 0");

// Booleans.
engine.boMes = 1;
assert(engine.boMes === true);
engine.boMes = 0;
assert(engine.boMes === false);
engine.boMes = "True";
assert(engine.boMes === true);
assert(errorOf(function () { engine.boMes = "quizá"; }) === 13);

// Text.
engine.chartTitle = 12.5;
assert(engine.chartTitle === "12.5", "a number becomes its text: " + engine.chartTitle);
engine.chartTitle = true;
assert(engine.chartTitle === "True");
engine.chartTitle = undefined;
assert(engine.chartTitle === "");
assert(errorOf(function () { engine.chartTitle = null; }) === 94, "Null into text");
assert(errorOf(function () { engine.chartTitle = engine; }) === 13, "an object is no text");

// Empty and Null coming back.
assert(engine.get_MainArray("x", 1, 1, 1) === undefined, "an empty variant is undefined");
assert(engine.get_info("x", 5) === "");
cnx.Execute("INSERT INTO ut_bi_Metrica (uf_Nombre) VALUES ('sin titulo')");
var rs = engine.OpenRecordset("SELECT uf_Nombre, uf_Titulo FROM ut_bi_Metrica", cnx);
assert(rs !== null && rs.State === 1 && rs.EOF === false);
assert(rs.Fields("uf_Nombre") === "sin titulo");
assert(rs.Fields("UF_TITULO") === null, "SQL NULL is null");
assert(engine.fieldValue(rs, "uf_Titulo") === 0, "fieldValue maps Null to 0");
assert(engine.getScalar("SELECT uf_Titulo FROM ut_bi_Metrica", cnx) === null, "getScalar keeps Null");
rs.MoveNext();
assert(rs.EOF === true);
assert(engine.getScalar("SELECT COUNT(*) FROM ut_bi_Metrica", cnx) == 1);

// Objects: the same object every time, and back into the component as itself.
assert(engine.ADOCnn === cnx, "the connection given is the connection read");
assert(engine.UM === um);
assert(engine.Search === engine.Search, "one wrapper per object");
var metrica = engine.CrearEntidad(VendimarBI.cMetrica);
metrica.Nombre = "Objeto";
assert(engine.GuardarEntidad(metrica) === true, "an entity passed back is itself");
assert(errorOf(function () { engine.GuardarEntidad({ Save: function () { return true; } }); }) === 13,
       "a script object is no component object");
assert(errorOf(function () { engine.GuardarEntidad(5); }) === 13);
assert(errorOf(function () { engine.GuardarEntidad(null); }) === 91, "Nothing has no Save");
engine.ADOCnn = null;
assert(engine.ADOCnn === null, "Nothing assigned, Nothing read");
engine.ADOCnn = cnx;

// Names match regardless of case, as automation's lookup does.
assert(engine.pkuser === engine.PKUser);
assert(engine.cargarentidad(VendimarBI.cMetrica, metrica.Sys_PK).Nombre === "Objeto");

// The members can be listed.
assert(Object.keys(metrica).indexOf("Nombre") >= 0, "properties are enumerable");
assert("Save" in metrica && !("Guardar" in metrica));
assert(JSON.parse(JSON.stringify(metrica)).Nombre === "Objeto");

// A list from the component is an array.
assert(Array.isArray(um.asked));

// A double property takes finite numbers only: NaN and the infinities are out
// of range, and the property keeps what it had.
var placed = CreateObject("VendimarBI.ETabIndicador");
var bar = CreateObject("VendimarBI.EBarraProgreso");
var light = CreateObject("VendimarBI.ESemaforo");
placed.Limite1 = 2.5;
bar.Dia_Min = 2.5;
light.Dia_Limite1 = 2.5;
[NaN, Infinity, -Infinity].forEach(function (value) {
    assert(errorOf(function () { placed.Limite1 = value; }) === 6, "Limite1 = " + value);
    assert(errorOf(function () { bar.Dia_Min = value; }) === 6, "Dia_Min = " + value);
    assert(errorOf(function () { light.Dia_Limite1 = value; }) === 6, "Dia_Limite1 = " + value);
});
assert(placed.Limite1 === 2.5 && bar.Dia_Min === 2.5 && light.Dia_Limite1 === 2.5);
placed.Limite1 = 1.7976931348623157e308;
assert(placed.Limite1 === 1.7976931348623157e308, "the largest double is still a double");
print("conversions ok");
