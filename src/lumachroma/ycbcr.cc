// (family under construction)
