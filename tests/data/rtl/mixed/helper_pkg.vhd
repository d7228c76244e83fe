package helper_pkg is
  constant WIDTH : natural := 6;
end package;
