// EEngine has no property Usuario.
var engine = CreateObject("VendimarBI.EEngine");
print(engine.Usuario);
