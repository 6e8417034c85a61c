-- Sample library for a new installation: perspectives, metrics, indicators of
-- the three kinds and one dashboard. Portable SQL (SQLite, PostgreSQL): keys
-- come from the database and parents are found by name.

INSERT INTO ut_bi_Perspectiva (uf_Nombre, uf_Entidad, uf_Grupos, uf_padre) VALUES ('Ventas', '@', '*', 0);
INSERT INTO ut_bi_Perspectiva (uf_Nombre, uf_Entidad, uf_Grupos, uf_padre) VALUES ('Inventario', 'Producto', '*', 0);
INSERT INTO ut_bi_Perspectiva (uf_Nombre, uf_Entidad, uf_Grupos, uf_padre)
  SELECT 'Por sucursal', 'Sucursal', '*', Sys_PK FROM ut_bi_Perspectiva WHERE uf_Nombre = 'Ventas';
INSERT INTO ut_bi_Perspectiva (uf_Nombre, uf_Entidad, uf_Grupos, uf_padre)
  SELECT 'Por cliente', 'Cliente', '*', Sys_PK FROM ut_bi_Perspectiva WHERE uf_Nombre = 'Ventas';

INSERT INTO ut_bi_Metrica (Sys_GUID, uf_Nombre, uf_Descripcion, uf_Titulo, uf_Decimales, uf_Formato, uf_Codigo, uf_FK_Perspectiva)
  SELECT '{6B1D2A10-6E2B-4C1A-9F00-000000000001}', 'Venta diaria', 'Importe vendido en el día', 'Venta del día', 2, '#,##0.00',
         'function valor(dia) { return ventas.total(dia) } // suma de los tickets cerrados',
         Sys_PK FROM ut_bi_Perspectiva WHERE uf_Nombre = 'Ventas';
INSERT INTO ut_bi_Metrica (Sys_GUID, uf_Nombre, uf_Descripcion, uf_Titulo, uf_Decimales, uf_Formato, uf_Codigo, uf_FK_Perspectiva)
  SELECT '{6B1D2A10-6E2B-4C1A-9F00-000000000002}', 'Tickets', 'Número de tickets del periodo', 'Tickets', 0, '#',
         'function valor(p) { return ventas.tickets(p) } // tickets cerrados en el periodo',
         Sys_PK FROM ut_bi_Perspectiva WHERE uf_Nombre = 'Ventas';
INSERT INTO ut_bi_Metrica (Sys_GUID, uf_Nombre, uf_Descripcion, uf_Titulo, uf_Decimales, uf_Formato, uf_Codigo, uf_FK_Perspectiva)
  SELECT '{6B1D2A10-6E2B-4C1A-9F00-000000000003}', 'Existencias', 'Unidades en almacén', 'Existencias', 0, '#',
         'function valor(p) { return almacen.existencias(p) } // unidades en almacén',
         Sys_PK FROM ut_bi_Perspectiva WHERE uf_Nombre = 'Inventario';

INSERT INTO ut_bi_Indicador (uf_Nombre, uf_Tipo, uf_FK_Perspectiva)
  SELECT 'Avance de ventas', 1, Sys_PK FROM ut_bi_Perspectiva WHERE uf_Nombre = 'Ventas';
INSERT INTO ut_bi_Indicador (uf_Nombre, uf_Tipo, uf_FK_Perspectiva)
  SELECT 'Resumen de ventas', 2, Sys_PK FROM ut_bi_Perspectiva WHERE uf_Nombre = 'Ventas';
INSERT INTO ut_bi_Indicador (uf_Nombre, uf_Tipo, uf_FK_Perspectiva)
  SELECT 'Semáforo de existencias', 3, Sys_PK FROM ut_bi_Perspectiva WHERE uf_Nombre = 'Inventario';

INSERT INTO ut_bi_BarraProg (uf_FK_Indicador, uf_FK_Metrica, uf_Dia_Min, uf_Dia_Max, uf_Dia_Color, uf_Dia_ColorDebajo, uf_Dia_ColorArriba,
    uf_Semana_Min, uf_Semana_Max, uf_Semana_Color, uf_Semana_ColorDebajo, uf_Semana_ColorArriba,
    uf_Mes_Min, uf_Mes_Max, uf_Mes_Color, uf_Mes_ColorDebajo, uf_Mes_ColorArriba,
    uf_Ano_Min, uf_Ano_Max, uf_Ano_Color, uf_Ano_ColorDebajo, uf_Ano_ColorArriba)
  SELECT i.Sys_PK, m.Sys_PK, 0, 5000, 32768, 255, 16711680, 0, 35000, 32768, 255, 16711680,
         0, 150000, 32768, 255, 16711680, 0, 1800000, 32768, 255, 16711680
  FROM ut_bi_Indicador i, ut_bi_Metrica m WHERE i.uf_Nombre = 'Avance de ventas' AND m.uf_Nombre = 'Venta diaria';
INSERT INTO ut_bi_MatrizGraf (uf_FK_Indicador, uf_FK_M_Metrica1, uf_FK_M_Metrica2, uf_FK_M_Metrica3, uf_FK_M_Metrica4, uf_FK_M_Metrica5,
    uf_FK_M_Metrica6, uf_FK_M_Metrica7, uf_FK_M_Metrica8, uf_FK_M_Metrica9, uf_FK_M_Metrica10,
    uf_FK_G_Metrica1, uf_FK_G_Metrica2, uf_FK_G_Metrica3, uf_FK_G_Metrica4, uf_FK_G_Metrica5, uf_G_Titulo, uf_G_Tipo)
  SELECT i.Sys_PK, m1.Sys_PK, m2.Sys_PK, 0, 0, 0, 0, 0, 0, 0, 0, m1.Sys_PK, 0, 0, 0, 0, 'Ventas del periodo', 3
  FROM ut_bi_Indicador i, ut_bi_Metrica m1, ut_bi_Metrica m2
  WHERE i.uf_Nombre = 'Resumen de ventas' AND m1.uf_Nombre = 'Venta diaria' AND m2.uf_Nombre = 'Tickets';
INSERT INTO ut_bi_Semaforo (uf_FK_Indicador, uf_FK_Metrica, uf_Dia_Lim1, uf_Dia_Lim2, uf_Semana_Lim1, uf_Semana_Lim2,
    uf_Mes_Lim1, uf_Mes_Lim2, uf_Ano_Lim1, uf_Ano_Lim2, uf_Invertido)
  SELECT i.Sys_PK, m.Sys_PK, 10, 50, 10, 50, 10, 50, 10, 50, 1
  FROM ut_bi_Indicador i, ut_bi_Metrica m WHERE i.uf_Nombre = 'Semáforo de existencias' AND m.uf_Nombre = 'Existencias';

INSERT INTO ut_bi_Tablero (uf_Nombre, uf_FK_Usuario) VALUES ('Mi tablero', 1);
INSERT INTO ut_bi_TabIndicador (uf_FK_Tablero, uf_FK_Indicador, uf_FK_Entidad, uf_X, uf_Y, uf_W, uf_H, uf_pinicial, uf_Periodos,
    uf_l1, uf_l2, uf_l3, uf_l4, uf_l5, uf_l6, uf_l7, uf_l8)
  SELECT t.Sys_PK, i.Sys_PK, 0, 300, 1050, 4800, 1800, 2, 15, 5000, 0, 35000, 0, 150000, 0, 1800000, 0
  FROM ut_bi_Tablero t, ut_bi_Indicador i WHERE t.uf_Nombre = 'Mi tablero' AND i.uf_Nombre = 'Avance de ventas';
INSERT INTO ut_bi_TabIndicador (uf_FK_Tablero, uf_FK_Indicador, uf_FK_Entidad, uf_X, uf_Y, uf_W, uf_H, uf_pinicial, uf_Periodos,
    uf_l1, uf_l2, uf_l3, uf_l4, uf_l5, uf_l6, uf_l7, uf_l8)
  SELECT t.Sys_PK, i.Sys_PK, 2, 5400, 1050, 2700, 3600, 0, 5, 10, 50, 10, 50, 10, 50, 10, 50
  FROM ut_bi_Tablero t, ut_bi_Indicador i WHERE t.uf_Nombre = 'Mi tablero' AND i.uf_Nombre = 'Semáforo de existencias';
INSERT INTO ut_bi_TabIndicador (uf_FK_Tablero, uf_FK_Indicador, uf_FK_Entidad, uf_X, uf_Y, uf_W, uf_H, uf_pinicial, uf_Periodos,
    uf_l1, uf_l2, uf_l3, uf_l4, uf_l5, uf_l6, uf_l7, uf_l8)
  SELECT t.Sys_PK, i.Sys_PK, 0, 300, 3000, 4800, 2400, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0
  FROM ut_bi_Tablero t, ut_bi_Indicador i WHERE t.uf_Nombre = 'Mi tablero' AND i.uf_Nombre = 'Resumen de ventas';
INSERT INTO ut_bi_Fig (uf_FK_Tablero, uf_X, uf_Y, uf_W, uf_H, uf_Tipo, uf_Fuente, uf_Texto, uf_TamFuente, uf_atrib_fuente, uf_color, uf_fondo, uf_alin)
  SELECT Sys_PK, 300, 150, 7800, 600, 0, 'DejaVu Sans', 'Ventas de la semana', 16, 1, 8388608, 16777215, 2
  FROM ut_bi_Tablero WHERE uf_Nombre = 'Mi tablero';
INSERT INTO ut_bi_Fig (uf_FK_Tablero, uf_X, uf_Y, uf_W, uf_H, uf_Tipo, uf_Fuente, uf_Texto, uf_TamFuente, uf_atrib_fuente, uf_color, uf_fondo, uf_alin)
  SELECT Sys_PK, 5400, 4800, 2700, 450, 0, 'DejaVu Sans', 'Datos al cierre del día', 9, 2, 8421504, 15790320, 1
  FROM ut_bi_Tablero WHERE uf_Nombre = 'Mi tablero';

-- Host tables the sample perspectives are bound to, so the entity search has rows to offer.
CREATE TABLE IF NOT EXISTS Cliente (Sys_PK integer PRIMARY KEY, Nombre varchar(80), Ciudad varchar(50));
CREATE TABLE IF NOT EXISTS Producto (Sys_PK integer PRIMARY KEY, Descripcion varchar(80), Codigo varchar(20));
CREATE TABLE IF NOT EXISTS Sucursal (Sys_PK integer PRIMARY KEY, Nombre varchar(80), Ciudad varchar(50));
INSERT INTO Cliente (Sys_PK, Nombre, Ciudad) SELECT 1, 'Ana López', 'Jerez' WHERE NOT EXISTS (SELECT 1 FROM Cliente WHERE Sys_PK = 1);
INSERT INTO Cliente (Sys_PK, Nombre, Ciudad) SELECT 2, 'Bodegas del Sur', 'Sevilla' WHERE NOT EXISTS (SELECT 1 FROM Cliente WHERE Sys_PK = 2);
INSERT INTO Cliente (Sys_PK, Nombre, Ciudad) SELECT 3, 'Carlos Ruiz', 'Cádiz' WHERE NOT EXISTS (SELECT 1 FROM Cliente WHERE Sys_PK = 3);
INSERT INTO Producto (Sys_PK, Descripcion, Codigo) SELECT 1, 'Vino tinto crianza 75 cl', 'VT-075' WHERE NOT EXISTS (SELECT 1 FROM Producto WHERE Sys_PK = 1);
INSERT INTO Producto (Sys_PK, Descripcion, Codigo) SELECT 2, 'Vino blanco joven 75 cl', 'VB-075' WHERE NOT EXISTS (SELECT 1 FROM Producto WHERE Sys_PK = 2);
INSERT INTO Producto (Sys_PK, Descripcion, Codigo) SELECT 3, 'Fino en rama 37,5 cl', 'FR-037' WHERE NOT EXISTS (SELECT 1 FROM Producto WHERE Sys_PK = 3);
INSERT INTO Sucursal (Sys_PK, Nombre, Ciudad) SELECT 1, 'Tienda Centro', 'Jerez' WHERE NOT EXISTS (SELECT 1 FROM Sucursal WHERE Sys_PK = 1);
INSERT INTO Sucursal (Sys_PK, Nombre, Ciudad) SELECT 2, 'Tienda Puerto', 'El Puerto de Santa María' WHERE NOT EXISTS (SELECT 1 FROM Sucursal WHERE Sys_PK = 2);
INSERT INTO Sucursal (Sys_PK, Nombre, Ciudad) SELECT 3, 'Tienda Sanlúcar', 'Sanlúcar de Barrameda' WHERE NOT EXISTS (SELECT 1 FROM Sucursal WHERE Sys_PK = 3);

-- The sample shop the sample metrics read: tickets of sale (one product line
-- each, written by the installer for the two years up to the day it runs)
-- and the units in stock per product.
CREATE TABLE IF NOT EXISTS Ticket (Sys_PK integer PRIMARY KEY, Fecha date, FK_Sucursal integer, FK_Cliente integer,
    FK_Producto integer, Cantidad integer, Importe numeric(12,2));
CREATE TABLE IF NOT EXISTS Existencia (FK_Producto integer PRIMARY KEY, Unidades integer);
INSERT INTO Existencia (FK_Producto, Unidades) SELECT 1, 120 WHERE NOT EXISTS (SELECT 1 FROM Existencia WHERE FK_Producto = 1);
INSERT INTO Existencia (FK_Producto, Unidades) SELECT 2, 35 WHERE NOT EXISTS (SELECT 1 FROM Existencia WHERE FK_Producto = 2);
INSERT INTO Existencia (FK_Producto, Unidades) SELECT 3, 8 WHERE NOT EXISTS (SELECT 1 FROM Existencia WHERE FK_Producto = 3);
