// EMetrica has no property Color; assigning it does not create one.
var metrica = CreateObject("VendimarBI.EMetrica");
metrica.Color = 5;
