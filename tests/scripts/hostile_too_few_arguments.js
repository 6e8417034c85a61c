// CargarEntidad takes a kind and a key; one argument is not enough.
var engine = CreateObject("VendimarBI.EEngine");
engine.CargarEntidad(VendimarBI.cMetrica);
