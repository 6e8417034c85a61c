// A key must be a number.
var engine = CreateObject("VendimarBI.EEngine");
engine.CargarEntidad(VendimarBI.cMetrica, "the first one");
